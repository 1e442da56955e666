// version_levels_table.h: the feature switches of the kernel, one row each, as plain data.
//
// The rows are in byte order of their names, capitals first, and are registered in that order. The
// integers of a level have a meaning only for the code that reads the level; -1 means that there is
// no such setting.
#pragma once

#include <cstddef>
#include <span>

namespace nmk_runtime {

/// One switch.
struct VersionLevelRow {
    const char* name;
    int previous;
    int default_level;
    int preview;
    int prerelease;  // 0 or 1
    const char* description;
};

/// All rows.
std::span<const VersionLevelRow> version_levels_table();

/// The documentation link of the row at a position in the table, from 0.
const char* version_level_link(std::size_t row);

}  // namespace nmk_runtime
