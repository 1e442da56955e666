// print_levels.h: version levels as a table, as a sheet for one, and as JSON.
#pragma once

#include <nmktoolbox/runtime/nmkVersion.h>

#include <iosfwd>
#include <vector>

namespace nmk_levels {

/// A heading, a line for each level, and a line with their number. A setting that does not exist
/// shows as "-"; a line feed in a description shows as a space.
void print_levels_as_table(const std::vector<const nmkVersion*>& levels, std::ostream& out);

/// Everything that is known of one level, a line for each item.
void print_one_level(const nmkVersion& level, std::ostream& out);

/// {"levels": [{"name", "state", "level", "previous", "default", "preview", "prerelease",
/// "description", "documentation"}, ...]}; a setting that does not exist is null.
void print_levels_as_json(const std::vector<const nmkVersion*>& levels, std::ostream& out);

}  // namespace nmk_levels
