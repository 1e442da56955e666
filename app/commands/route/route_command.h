// route_command.h: `nmk route FILE`: searches a route through a plane with blocked places.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "shell/command.h"

class nmkProgressBreak;

namespace nmk_route {

/// Runs the command with the arguments that follow its name.
///
///   out     the figures and the nodes, or JSON
///   err     one line where something is wrong or there is no route
///   answer  0 a route, 1 no route or stopped, 2 bad usage, bad input or an output that cannot be
///           written
///
/// Where there is no route the outputs are written all the same: the picture shows why.
int run_route(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

/// The same with a reporter of the caller's, which may be null.
int run_route(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress);

/// What `nmk help route` prints.
std::string route_help();

inline constexpr nmk_shell::Command route_command{
    "route", "search a short route through a plane with blocked places", run_route, route_help};

}  // namespace nmk_route
