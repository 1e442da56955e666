// version_levels_table.h: the feature switches of the kernel, one row each, as plain data.
//
// The rows stand in byte order of their names, capitals first, and are registered in that order.
// What a level's integers mean is between the row and the code that asks for it; -1 says that there
// is no such setting.
#pragma once

#include <cstddef>
#include <span>

/// One switch.
struct VersionLevelRow {
    const char* name;
    int previous;
    int default_level;
    int preview;
    int prerelease;  // 0 or 1
    const char* description;
};

std::span<const VersionLevelRow> version_levels_table();

/// The documentation link of the row at a position in the table, from 0.
const char* version_level_link(std::size_t row);
