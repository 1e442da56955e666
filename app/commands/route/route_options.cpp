// route_options: the command line of `nmk route`.

#include "commands/route/route_options.h"

#include <cmath>

#include "shell/command_options.h"

namespace nmk_route {

namespace {

using Problem = std::string;  // empty: none

template <std::optional<giPoint2> RouteOptions::*point>
Problem set_point(RouteOptions& options, const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    if (numbers.size() != 2 || std::abs(numbers[0]) > nmk_lattice::max_route_coordinate ||
        std::abs(numbers[1]) > nmk_lattice::max_route_coordinate) {
        return nmk_text::quoted(value) + " is not a point; expected X,Y from -1e6 to 1e6";
    }
    options.*point = giPoint2(numbers[0], numbers[1]);
    return {};
}

Problem set_start(RouteOptions& options, const std::string& value) {
    const Problem problem = set_point<&RouteOptions::start>(options, value);
    return problem.empty() ? problem : "--start " + problem;
}

Problem set_goal(RouteOptions& options, const std::string& value) {
    const Problem problem = set_point<&RouteOptions::goal>(options, value);
    return problem.empty() ? problem : "--goal " + problem;
}

Problem set_kind(RouteOptions& options, const std::string& value) {
    const auto kind = goal_kind_of_name(value);
    if (!kind) {
        return "--goal-kind " + nmk_text::quoted(value) +
               " is unknown; expected point, line, line-with-gradient or moving-line";
    }
    options.kind = *kind;
    return {};
}

Problem set_gradient(RouteOptions& options, const std::string& value) {
    const auto number = nmk_text::read_coordinate(value);
    if (!number || !(*number > 0.0)) {
        return "--gradient " + nmk_text::quoted(value) +
               " is not a gradient; expected a number above 0";
    }
    options.gradient = *number;
    return {};
}

Problem set_box(RouteOptions& options, const std::string& value) {
    const auto box = nmk_blocked::checked_box(nmk_text::read_coordinates(value));
    if (!box) {
        return "--box " + nmk_text::quoted(value) + ": " + box.error().message;
    }
    options.box = *box;
    return {};
}

Problem set_steps(RouteOptions& options, const std::string& value) {
    const auto steps = nmk_blocked::checked_steps(nmk_text::read_coordinates(value));
    if (!steps) {
        return "--steps " + nmk_text::quoted(value) + ": " + steps.error().message;
    }
    options.steps = *steps;
    return {};
}

Problem set_corners(RouteOptions& options, const std::string& value) {
    if (value != "cut" && value != "clear") {
        return "--corners " + nmk_text::quoted(value) + " is unknown; expected cut or clear";
    }
    options.cut_corners = value == "cut";
    return {};
}

constexpr nmk_shell::ValueOption<RouteOptions> value_options[] = {
    {"--start", set_start},
    {"--goal", set_goal},
    {"--goal-kind", set_kind},
    {"--gradient", set_gradient},
    {"--box", set_box},
    {"--steps", set_steps},
    {"--corners", set_corners},
    {"--csv", nmk_shell::set_output_file<RouteOptions, &RouteOptions::csv_file>},
    {"--svg", nmk_shell::set_output_file<RouteOptions, &RouteOptions::svg_file>},
    {"--html", nmk_shell::set_output_file<RouteOptions, &RouteOptions::html_file>},
};

constexpr nmk_shell::SwitchOption<RouteOptions> switches[] = {
    {"--forward", &RouteOptions::forward},
    {"--json", &RouteOptions::json},
    {"--quiet", &RouteOptions::quiet},
};

Problem check(RouteOptions& options) {
    if (options.file_name.empty()) {
        return "expected the name of a file: nmk route FILE; see nmk help route";
    }
    if (!options.start || !options.goal) {
        return std::string("expected ") + (options.start ? "--goal" : "--start") +
               " X,Y; see nmk help route";
    }
    const std::string kind = goal_kind_name(options.kind);
    if (needs_gradient(options.kind) && !options.gradient) {
        return "--goal-kind " + kind + " needs a --gradient";
    }
    if (!needs_gradient(options.kind) && options.gradient) {
        return "--gradient does not apply to --goal-kind " + kind +
               "; expected line-with-gradient or moving-line";
    }
    const std::string_view outputs[] = {options.csv_file, options.svg_file, options.html_file};
    Problem problem = nmk_shell::check_input_is_kept(options.file_name, outputs);
    return problem.empty() ? nmk_shell::check_outputs_differ(outputs) : problem;
}

constexpr nmk_shell::OptionTable<RouteOptions> table{
    "route", value_options, switches, &nmk_shell::set_file_name<RouteOptions>, check};

}  // namespace

nmk_text::Result<RouteOptions> read_route_options(const std::vector<std::string>& arguments) {
    return nmk_shell::read_options(table, arguments);
}

}  // namespace nmk_route
