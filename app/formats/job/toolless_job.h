// toolless_job.h: reads a format that knows no tools into a job with one tool, "all".
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_job {

/// `read_items(text, scale)` answers the items in mm, `scale` mm for each unit of the file, or
/// throws a JobError without a file name.
template <class ReadItems>
std::variant<MachiningJob, nmk_files::Error> read_toolless_job(JobFormat format,
                                                               const std::string& file_name,
                                                               std::string text,
                                                               std::optional<JobUnits> units,
                                                               const ReadItems& read_items) {
    MachiningJob job;
    job.file_name = file_name;
    job.format = format;
    job.units = units.value_or(JobUnits::millimetres);
    job.text = std::move(text);
    try {
        std::vector<JobItem> items = read_items(job.text, mm_of(job.units));
        if (!items.empty()) {
            job.tools.push_back({"all", std::nullopt, std::move(items)});
        }
    } catch (nmk_files::Error& error) {
        error.file_name = file_name;
        return error;
    }
    return job;
}

}  // namespace nmk_job
