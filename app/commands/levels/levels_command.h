// levels_command.h: the command `nmk levels`, which lists the version levels and their state.
#pragma once

#include "shell/command.h"

namespace nmk_levels {

/// Declares the options; the command lists the levels in order of registration, or shows one.
///
/// Its exit code is 0; 2 after one line on standard error if the arguments are wrong. An empty
/// selection is not an error.
nmk_shell::Run declare_levels(nmk_shell::OptionTable& table);

inline constexpr nmk_shell::Command levels_command{
    "levels", "list and show the version levels of the library", declare_levels};

}  // namespace nmk_levels
