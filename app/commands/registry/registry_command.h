// registry_command.h: the command `nmk registry`, which lists and changes the registry.
#pragma once

#include "shell/command.h"

namespace nmk_registry {

/// Declares the options; the command performs one action under the lock of the registry.
///
/// Its exit code is 0; 1 if a key or value does not exist or another session holds the lock; 2 if
/// the arguments or a file are wrong or the registry fails. 1 and 2 come with one line on standard
/// error.
nmk_shell::Run declare_registry(nmk_shell::OptionTable& table);

inline constexpr nmk_shell::Command registry_command{
    "registry", "list and change the registry that programs share", declare_registry};

}  // namespace nmk_registry
