// toolless_job.h: reads a file of a format without tools as a job with one tool, "all".
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_job {

/// `read_items(text, units)` returns the items in mm, or throws an Error without a file name.
template <class ReadItems>
nmk_text::Result<MachiningJob> read_toolless_job(JobFormat format, const std::string& file_name,
                                                 std::string text, std::optional<JobUnits> units,
                                                 const ReadItems& read_items) {
    MachiningJob job;
    job.file_name = file_name;
    job.format = format;
    job.units = units.value_or(JobUnits::millimetres);
    job.text = std::move(text);
    nmk_text::Result<std::vector<JobItem>> items =
        nmk_text::value_or_error(file_name, [&] { return read_items(job.text, job.units); });
    if (!items) {
        return items.error();
    }
    job.items = *std::move(items);
    if (!job.items.empty()) {
        job.tools.push_back({"all", std::nullopt});
    }
    return job;
}

}  // namespace nmk_job
