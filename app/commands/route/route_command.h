// route_command.h: `nmk route FILE`: finds a short route across a plane with blocked cells.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "shell/command.h"

class nmkProgressBreak;

namespace nmk_route {

/// Runs the command with the arguments that follow its name.
///
///   out      the figures and the nodes, or JSON
///   err      one line if there is an error or no route
///   returns  0 a route, 1 no route or stopped, 2 bad usage, bad input or an output that cannot be
///            written
///
/// The outputs are also written if there is no route: the picture shows why.
int run_route(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

/// The same with a progress reporter of the caller, which may be null.
int run_route(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress);

/// The text of `nmk help route`.
std::string route_help();

inline constexpr nmk_shell::Command route_command{
    "route", "find a short route across a plane with blocked cells", run_route, route_help};

}  // namespace nmk_route
