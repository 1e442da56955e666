// write_job.cpp: see write_job.h.

#include "formats/job_files/write_job.h"

#include "formats/csv/csv_writer.h"
#include "formats/excellon/excellon_writer.h"
#include "formats/job_files/job_format.h"
#include "formats/json/json_writer.h"
#include "formats/tsplib/tsplib_writer.h"

namespace nmk_job_files {

namespace {

bool has_same_ending(const std::string& file_name, const std::string& input) {
    return name_ending(file_name) == name_ending(input);
}

nmk_text::Error cannot_write(const std::string& file_name, const std::string& what) {
    return {file_name, 0,
            "a " + what + " can only be written from a " + what + "; expected .nc, .csv or .json"};
}

}  // namespace

bool names_output(const std::string& file_name, const std::string& input) {
    const std::string ending = name_ending(file_name);
    return ending == "csv" || ending == "json" || ending == "tsp" ||
           names_drill_program(file_name) || has_same_ending(file_name, input);
}

nmk_text::Result<std::string> text_as_read(const nmk_job::MachiningJob& job,
                                           std::span<const nmk_job::JobCut> order, bool is_part) {
    switch (job.format) {
        case nmk_job::JobFormat::excellon:
            return nmk_excellon::write_excellon(job, order, is_part);
        case nmk_job::JobFormat::csv:
            return nmk_csv::write_csv(job, order);
        case nmk_job::JobFormat::tsplib:
            break;
    }
    if (is_part) {
        return nmk_text::Error{job.file_name, 0,
                               "no node can be left out of a TSPLIB instance; expected .csv or "
                               ".json as the output"};
    }
    return nmk_tsplib::write_tsplib(job, order);
}

nmk_text::Result<std::string> job_text(const nmk_job::MachiningJob& job,
                                       std::span<const nmk_job::JobCut> order,
                                       const std::string& file_name, bool is_part) {
    const std::string ending = name_ending(file_name);
    if (ending == "csv") {
        return nmk_csv::write_csv(job, order);
    }
    if (ending == "json") {
        return nmk_json::write_json(job, order);
    }
    const bool is_same = has_same_ending(file_name, job.file_name);
    if (names_drill_program(file_name) && job.format != nmk_job::JobFormat::excellon && !is_same) {
        return cannot_write(file_name, "drill file");
    }
    if (ending == "tsp" && job.format != nmk_job::JobFormat::tsplib && !is_same) {
        return cannot_write(file_name, "TSPLIB instance");
    }
    if (!names_output(file_name, job.file_name)) {
        return nmk_text::Error{
            file_name, 0,
            "cannot write ." + ending +
                "; expected .drl, .nc, .csv, .json or the extension of the input"};
    }
    return text_as_read(job, order, is_part);
}

}  // namespace nmk_job_files
