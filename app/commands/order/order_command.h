// order_command.h: `nmk order FILE`: orders the holes of a file and reports the travel saved.
#pragma once

#include <ostream>

#include "shell/command.h"

class nmkProgressBreak;

namespace nmk_order {

struct OrderOptions;

/// Declares the options of the command, which draws its progress on a terminal.
nmk_shell::Run declare_order(nmk_shell::OptionTable& table);

/// Runs the command with a progress reporter of the caller, which may be null.
///
///   out      the table or JSON
///   err      one line if there is an error
///   returns  0 done (also when stopped: the order is still complete), 1 no result, 2 bad input or
///            an output that cannot be written
int run_order(const OrderOptions& options, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress);

inline constexpr nmk_shell::Command order_command{
    "order", "order holes and slots so that the cutter travels little", declare_order};

}  // namespace nmk_order
