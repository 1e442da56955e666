// write_job.cpp: see write_job.h.

#include "formats/job_files/write_job.h"

#include "formats/csv/csv_writer.h"
#include "formats/excellon/excellon_writer.h"
#include "formats/job_files/job_format.h"
#include "formats/json/json_writer.h"

namespace nmk_app {

std::variant<std::string, JobError> job_text(const MachiningJob& ordered,
                                             const std::string& file_name) {
    const std::string ending = name_ending(file_name);
    if (ending == "csv") {
        return write_csv(ordered);
    }
    if (ending == "json") {
        return write_json(ordered);
    }
    if (!names_drill_program(file_name)) {
        return JobError{file_name, 0, "cannot write ." + ending + "; expected .drl, .csv or .json"};
    }
    if (ordered.format != JobFormat::excellon) {
        return JobError{file_name, 0,
                        "a drill file can only be made of a drill file; expected .csv or .json"};
    }
    return write_excellon(ordered);
}

}  // namespace nmk_app
