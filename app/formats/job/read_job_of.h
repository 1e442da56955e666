// read_job_of.h: reads the text of a file into a job, for formats that need nothing but the text.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_job {

/// `read(job)` adds the items and tools of job.text, whose lengths are in job.units, or throws an
/// Error without a file name.
template <class Read>
nmk_text::Result<MachiningJob> read_job_of(JobFormat format, const std::string& file_name,
                                           std::string text, std::optional<JobUnits> units,
                                           const Read& read) {
    MachiningJob job;
    job.file_name = file_name;
    job.format = format;
    job.units = units.value_or(JobUnits::millimetres);
    job.text = std::move(text);
    return nmk_text::value_or_error(file_name, [&] {
        read(job);
        return std::move(job);
    });
}

}  // namespace nmk_job
