// write_job.cpp: see write_job.h.

#include "formats/job_files/write_job.h"

#include "formats/csv/csv_writer.h"
#include "formats/excellon/excellon_writer.h"
#include "formats/job_files/job_format.h"
#include "formats/json/json_writer.h"

namespace nmk_job_files {

nmk_text::Result<std::string> job_text(const nmk_job::MachiningJob& ordered,
                                       const std::string& file_name) {
    const std::string ending = name_ending(file_name);
    if (ending == "csv") {
        return nmk_csv::write_csv(ordered);
    }
    if (ending == "json") {
        return nmk_json::write_json(ordered);
    }
    if (!names_drill_program(file_name)) {
        return nmk_text::Error{file_name, 0,
                               "cannot write ." + ending + "; expected .drl, .csv or .json"};
    }
    if (ordered.format != nmk_job::JobFormat::excellon) {
        return nmk_text::Error{
            file_name, 0, "a drill file can only be made of a drill file; expected .csv or .json"};
    }
    return nmk_excellon::write_excellon(ordered);
}

}  // namespace nmk_job_files
