// read_job.cpp: see read_job.h.

#include "formats/job_files/read_job.h"

#include "files/read_whole_file.h"
#include "formats/csv/csv_reader.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/job_files/job_format.h"
#include "formats/tsplib/tsplib_reader.h"

namespace nmk_app {

std::variant<MachiningJob, JobError> read_job_file(const std::string& file_name,
                                                   std::optional<JobUnits> units) {
    std::variant<std::string, JobError> text = read_whole_file(file_name);
    if (const JobError* error = std::get_if<JobError>(&text)) {
        return *error;
    }
    return read_job_text(file_name, std::get<std::string>(std::move(text)), units);
}

std::variant<MachiningJob, JobError> read_job_text(const std::string& file_name, std::string text,
                                                   std::optional<JobUnits> units) {
    if (const std::optional<JobError> error = no_text_file(file_name, text)) {
        return *error;
    }
    const std::optional<JobFormat> format = format_of(file_name, text);
    if (!format) {
        return JobError{file_name, 0,
                        "is no drill file, table (x,y) or TSPLIB instance that can be told"};
    }
    switch (*format) {
        case JobFormat::excellon:
            return read_excellon(file_name, std::move(text), units);
        case JobFormat::csv:
            return read_csv(file_name, std::move(text), units);
        case JobFormat::tsplib:
            break;
    }
    return read_tsplib(file_name, std::move(text), units);
}

}  // namespace nmk_app
