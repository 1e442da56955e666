// write_whole_file.h: writes a file as a whole or not at all.
//
// The text goes to a new file of an unguessable name beside the target, is flushed to the disk, and
// only then takes the target's name. Whatever fails on the way, the target stays as it was and
// nothing is left beside it. Signals that would end the process (Ctrl-C, a hangup, a polite kill)
// wait until the file is in place or gone, so that they leave nothing either.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nmk_files {

/// Writes the text; answers why it could not be written, or nothing when it stands on the disk.
///
/// A link is followed to the file that it names. What is no file (a pipe, a terminal, /dev/full) is
/// written to as it is. A new file gets the usual rights, a replaced one keeps its own, and its
/// owner where the process may.
std::optional<std::string> write_whole_file(const std::string& file_name, std::string_view text);

}  // namespace nmk_files
