// config_command.h: the command `nmk config`, which shows, checks and makes configuration
// documents.
#pragma once

#include "shell/command.h"

namespace nmk_config {

/// Declares the options; the command performs one action.
///
/// Its exit code is 0; 1 if no file exists or the document has a problem, which is then printed
/// with line and column; 2 if the arguments are wrong, a file cannot be written, or it exists.
nmk_shell::Run declare_config(nmk_shell::OptionTable& table);

inline constexpr nmk_shell::Command config_command{
    "config", "show, check and make configuration documents", declare_config};

}  // namespace nmk_config
