// id_command.h: the command `nmk id`, which makes, explains and lists identifiers.
#pragma once

#include "shell/command.h"

namespace nmk_id {

/// Declares the options; the command makes identifiers, explains one, or lists those of a stream.
///
/// Its exit code is 0; 2 after one line on standard error if the arguments are wrong, or if the
/// file cannot be read or has something else in it; what precedes that is listed.
nmk_shell::Run declare_id(nmk_shell::OptionTable& table);

inline constexpr nmk_shell::Command id_command{
    "id", "make, explain and list the identifiers of entities", declare_id};

}  // namespace nmk_id
