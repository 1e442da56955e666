// model_command.h: the command `nmk model`, which examines, converts and draws triangle models.
#pragma once

#include <ostream>

#include "shell/command.h"

class nmkProgressBreak;

namespace nmk_model {

struct ModelOptions;

/// Declares the options of the command, which draws its progress on a terminal.
nmk_shell::Run declare_model(nmk_shell::OptionTable& table);

/// Runs the command with a progress reporter of the caller.
///
///   returns  0 done, 1 stopped, 2 bad input or an output that cannot be written
int run_model(const ModelOptions& options, std::ostream& out, std::ostream& err,
              nmkProgressBreak& progress);

inline constexpr nmk_shell::Command model_command{
    "model", "examine, convert and draw triangle models", declare_model};

}  // namespace nmk_model
