// read_job.cpp: see read_job.h.

#include "formats/job_files/read_job.h"

#include "files/read_whole_file.h"
#include "formats/csv/csv_reader.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/job_files/job_format.h"
#include "formats/tsplib/tsplib_reader.h"

namespace nmk_job_files {

std::variant<nmk_job::MachiningJob, nmk_files::Error> read_job_file(
    const std::string& file_name, std::optional<nmk_job::JobUnits> units) {
    std::variant<std::string, nmk_files::Error> text = nmk_files::read_whole_file(file_name);
    if (const nmk_files::Error* error = std::get_if<nmk_files::Error>(&text)) {
        return *error;
    }
    return read_job_text(file_name, std::get<std::string>(std::move(text)), units);
}

std::variant<nmk_job::MachiningJob, nmk_files::Error> read_job_text(
    const std::string& file_name, std::string text, std::optional<nmk_job::JobUnits> units) {
    if (const std::optional<nmk_files::Error> error = nmk_files::check_text_file(file_name, text)) {
        return *error;
    }
    const std::optional<nmk_job::JobFormat> format = format_of(file_name, text);
    if (!format) {
        return nmk_files::Error{
            file_name, 0, "is no drill file, table (x,y) or TSPLIB instance that can be told"};
    }
    switch (*format) {
        case nmk_job::JobFormat::excellon:
            return nmk_excellon::read_excellon(file_name, std::move(text), units);
        case nmk_job::JobFormat::csv:
            return nmk_csv::read_csv(file_name, std::move(text), units);
        case nmk_job::JobFormat::tsplib:
            break;
    }
    return nmk_tsplib::read_tsplib(file_name, std::move(text), units);
}

}  // namespace nmk_job_files
