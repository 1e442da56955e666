// help_text.h: the help of a command and of the tool, within 80 columns.
#pragma once

#include <span>
#include <string>

#include "shell/option_table.h"

namespace nmk_shell {

/// The columns of a terminal that every help fits into.
constexpr std::size_t help_width = 80;

/// "nmk order [OPTION]... FILE"
std::string usage_line(const OptionTable& table);

/// "-o, --output OUT"
std::string option_heading(const Argument& option);

/// The description of an argument, with its choices unless these have descriptions, and its
/// default.
std::string option_text(const Argument& option);

/// What `nmk help COMMAND` prints.
std::string command_help(const OptionTable& table);

/// What `nmk help` prints: the commands, then the rest of the tool's own table.
std::string general_help(const OptionTable& tool, std::span<const HelpTerm> commands);

}  // namespace nmk_shell
