// electrode_command.h: the command `nmk electrode`, which writes, lists, checks and unpacks
// electrode archives.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include "commands/electrode/electrode_options.h"
#include "shell/command.h"

namespace nmk_electrode {

/// Declares the options. The exit code is 0; 1 where verify found a problem or Ctrl-C stopped the
/// work; 2 after one line on standard error for bad usage, and for files that cannot be read or
/// written.
nmk_shell::Run declare_electrode(nmk_shell::OptionTable& table);

/// Runs the command with a reporter in place of that of the terminal.
int run_electrode(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                  nmkProgressBreak& progress);

inline constexpr nmk_shell::Command electrode_command{
    "electrode", "write, list, check and unpack electrode archives", declare_electrode};

}  // namespace nmk_electrode
