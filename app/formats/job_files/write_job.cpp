// write_job.cpp: see write_job.h.

#include "formats/job_files/write_job.h"

#include "formats/csv/csv_writer.h"
#include "formats/excellon/excellon_writer.h"
#include "formats/job_files/job_format.h"
#include "formats/json/json_writer.h"

namespace nmk_job_files {

nmk_text::Result<std::string> job_text(const nmk_job::MachiningJob& job,
                                       std::span<const nmk_job::JobCut> order,
                                       const std::string& file_name) {
    const std::string ending = name_ending(file_name);
    if (ending == "csv") {
        return nmk_csv::write_csv(job, order);
    }
    if (ending == "json") {
        return nmk_json::write_json(job, order);
    }
    if (!names_drill_program(file_name)) {
        return nmk_text::Error{file_name, 0,
                               "cannot write ." + ending + "; expected .drl, .csv or .json"};
    }
    if (job.format != nmk_job::JobFormat::excellon) {
        return nmk_text::Error{
            file_name, 0,
            "a drill file can only be written from a drill file; expected .csv or .json"};
    }
    return nmk_excellon::write_excellon(job, order);
}

}  // namespace nmk_job_files
