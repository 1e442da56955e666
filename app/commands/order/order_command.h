// order_command.h: `nmk order FILE`: orders the holes of a file and reports the travel saved.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "shell/command.h"

class nmkProgressBreak;

namespace nmk_order {

/// Runs the command with the arguments that follow its name.
///
///   out      the table or JSON
///   err      one line if there is an error
///   returns  0 done (also when stopped: the order is still complete), 1 no result, 2 bad usage,
///   bad
///            input or an output that cannot be written
int run_order(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

/// The same with a progress reporter of the caller, which may be null.
int run_order(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress);

/// What `nmk help order` prints.
std::string order_help();

inline constexpr nmk_shell::Command order_command{
    "order", "order holes and slots so that the cutter travels little", run_order, order_help};

}  // namespace nmk_order
