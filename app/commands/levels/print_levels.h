// print_levels.h: version levels as a table, as a list of the facts of one, and as JSON.
#pragma once

#include <nmktoolbox/runtime/nmkVersion.h>

#include <iosfwd>
#include <vector>

namespace nmk_levels {

/// Prints a heading, a line for each level, and a line with their number. A setting that does not
/// exist is "-"; a line feed in a description becomes a space.
void print_levels_as_table(const std::vector<const nmkVersion*>& levels, std::ostream& out);

/// Prints all facts of one level, a line for each.
void print_one_level(const nmkVersion& level, std::ostream& out);

/// Prints {"schema": 1, "levels": [{"name", "state", "level", "previous", "default", "preview",
/// "prerelease", "description", "documentation"}, ...]}; a setting that does not exist is null.
void print_levels_as_json(const std::vector<const nmkVersion*>& levels, std::ostream& out);

}  // namespace nmk_levels
