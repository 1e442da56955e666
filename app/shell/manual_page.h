// manual_page.h: the help of a command as a manual page.
#pragma once

#include <span>
#include <string>

#include "shell/option_table.h"

namespace nmk_shell {

/// The page nmk-COMMAND(1), as source for the macros `man`.
std::string command_page(const OptionTable& table, const std::string& version);

/// The page nmk(1), with all commands.
std::string general_page(const OptionTable& tool, std::span<const HelpTerm> commands,
                         const std::string& version);

}  // namespace nmk_shell
