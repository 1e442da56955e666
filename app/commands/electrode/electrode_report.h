// electrode_report.h: what an archive has, as text and as JSON.
#pragma once

#include <string>

#include "commands/electrode/electrode_archive.h"

namespace nmk_electrode {

/// A row for each electrode, a line with the sums, and one with the status where that is not sound.
std::string list_text(const ArchiveContents& contents);
std::string list_json(const ArchiveContents& contents);

/// One line: sound, or the status and its reason.
std::string verify_text(const ArchiveContents& contents);
std::string verify_json(const ArchiveContents& contents);

}  // namespace nmk_electrode
