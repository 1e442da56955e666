// job_notes.h: what is unusual about a job and may be a mistake in its file.
#pragma once

#include <string>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_order {

/// Remarks for a person, a sentence each without its full stop: items of one tool that coincide,
/// and tools of one diameter.
std::vector<std::string> job_notes(const nmk_job::MachiningJob& job);

/// Why a file without holes and slots is refused.
std::string no_items_message(const std::string& file_name);

}  // namespace nmk_order
