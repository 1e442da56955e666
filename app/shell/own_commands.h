// own_commands.h: the commands that are about the tool itself: help and completion.
#pragma once

#include "shell/command.h"

namespace nmk_shell {

class ToolCommands;

/// `nmk help [COMMAND]`: prints the help of the tool or of a command, or the manual page.
Run declare_help(const ToolCommands& commands, OptionTable& table);

/// `nmk completion SHELL`: prints the completion script for a shell.
Run declare_completion(const ToolCommands& commands, OptionTable& table);

}  // namespace nmk_shell
