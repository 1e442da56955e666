// levels_command.h: the command `nmk levels`, which lists the version levels and their state.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "shell/command.h"

namespace nmk_levels {

/// Lists the levels in order of registration, or shows one.
///
///   arguments   after the word "levels": [NAME] [--find TEXT] [--state WORD] [--json] [--quiet]
///   returns     0; 2 after one line on `err` if the arguments are wrong
///
/// --find selects the levels with the text in their name or description, in upper or lower case;
/// --state those in the state unavailable, default, previous, preview or unknown. An empty
/// selection is not an error. --quiet prints no text; --json still prints.
int run_levels(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

/// The text of `nmk help levels`.
std::string levels_help();

inline constexpr nmk_shell::Command levels_command{
    "levels", "list and show the version levels of the library", run_levels, levels_help};

}  // namespace nmk_levels
