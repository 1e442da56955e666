// read_job.cpp: see read_job.h.

#include "formats/job_files/read_job.h"

#include "files/read_whole_file.h"
#include "formats/csv/csv_reader.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/job_files/job_format.h"
#include "formats/tsplib/tsplib_reader.h"

namespace nmk_job_files {

nmk_text::Result<nmk_job::MachiningJob> read_job_file(const std::string& file_name,
                                                      std::optional<nmk_job::JobUnits> units,
                                                      std::optional<nmk_job::JobFormat> format) {
    nmk_text::Result<std::string> text = nmk_files::read_input(file_name);
    if (!text) {
        return text.error();
    }
    return read_job_text(nmk_files::input_name(file_name), *std::move(text), units, format);
}

nmk_text::Result<nmk_job::MachiningJob> read_job_text(const std::string& file_name,
                                                      std::string text,
                                                      std::optional<nmk_job::JobUnits> units,
                                                      std::optional<nmk_job::JobFormat> format) {
    if (const auto checked = nmk_files::check_text_file(file_name, text); !checked) {
        return checked.error();
    }
    const std::optional<nmk_job::JobFormat> found = format_of(file_name, text, format);
    if (!found) {
        return nmk_text::Error{
            file_name, 0,
            "unknown format; expected a drill file, a table x,y or a TSPLIB instance"};
    }
    switch (*found) {
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
