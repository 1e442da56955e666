// route_options.h: the command line of `nmk route`.
#pragma once

#include <optional>
#include <string>

#include "commands/route/find_route.h"
#include "formats/blocked/blocked_reader.h"
#include "shell/option_table.h"

namespace nmk_route {

/// The command line of `nmk route`, checked as far as possible without the file.
struct RouteOptions {
    std::string file_name;
    std::optional<giPoint2> start, goal;
    GoalKind kind = GoalKind::point;
    std::optional<double> gradient;
    std::optional<nmk_blocked::PlaneBox> box;  // instead of the one in the file
    std::optional<giPoint2> steps;             // the same
    std::optional<bool> cut_corners;           // empty: true for a list, false for a map
    bool forward = false;
    std::string csv_file, svg_file, html_file;  // empty: not written
    bool json = false;
    bool quiet = false;
};

/// Declares the options, which are read into `options`.
void declare_route_options(nmk_shell::OptionTable& table, RouteOptions& options);

}  // namespace nmk_route
