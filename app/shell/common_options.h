// common_options.h: the options that every command takes.
#pragma once

#include "shell/option_table.h"

namespace nmk_shell {

/// Declares `--level`, `--help` and `--version` below the options of a command. `--level` takes
/// effect when it is read; the tool looks for the other two before it reads the arguments.
void declare_common_options(OptionTable& table);

}  // namespace nmk_shell
