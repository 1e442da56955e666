// levels_command.h: the command `nmk levels`, which shows the version levels and how they stand.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "shell/command.h"

namespace nmk_levels {

/// Lists the levels in order of registration, or shows one.
///
///   arguments   what follows the word "levels": [NAME] [--find TEXT] [--state WORD] [--json]
///               [--quiet]
///   answer      0; 2 after one line on `err` when the arguments are not right
///
/// --find takes the levels whose name or description holds the text, whatever its case; --state
/// those that stand at unavailable, default, previous, preview or unknown. Finding none is no
/// error. --quiet prints no text; --json still prints.
int run_levels(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

/// What `nmk help levels` prints.
std::string levels_help();

inline constexpr nmk_shell::Command levels_command{
    "levels", "list and show the version levels of the library", run_levels, levels_help};

}  // namespace nmk_levels
