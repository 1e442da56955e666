// write_job.cpp: see write_job.h.

#include "order/write_job.h"

#include "files/write_whole_file.h"
#include "order/csv_writer.h"
#include "order/excellon_writer.h"
#include "order/job_format.h"
#include "order/json_writer.h"

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

std::optional<JobError> write_job_file(const MachiningJob& ordered, const std::string& file_name) {
    const std::variant<std::string, JobError> text = job_text(ordered, file_name);
    if (const JobError* error = std::get_if<JobError>(&text)) {
        return *error;
    }
    if (std::optional<std::string> problem =
            write_whole_file(file_name, std::get<std::string>(text))) {
        return JobError{file_name, 0, *std::move(problem)};
    }
    return std::nullopt;
}

}  // namespace nmk_app
