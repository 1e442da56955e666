// route_command.h: `nmk route FILE`: finds a short route across a plane with blocked cells.
#pragma once

#include <ostream>

#include "shell/command.h"

class nmkProgressBreak;

namespace nmk_route {

struct RouteOptions;

/// Declares the options of the command, which draws its progress on a terminal.
nmk_shell::Run declare_route(nmk_shell::OptionTable& table);

/// Runs the command with a progress reporter of the caller, which may be null.
///
///   out      the figures and the nodes, or JSON
///   err      one line if there is an error or no route
///   returns  0 a route, 1 no route or stopped, 2 bad input or an output that cannot be written
///
/// The outputs are also written if there is no route: the picture shows why.
int run_route(const RouteOptions& options, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress);

inline constexpr nmk_shell::Command route_command{
    "route", "find a short route across a plane with blocked cells", declare_route};

}  // namespace nmk_route
