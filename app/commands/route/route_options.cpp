// route_options: what a person asks of `nmk route`.

#include "commands/route/route_options.h"

#include <cmath>

#include "shell/command_options.h"

namespace nmk_app {

namespace {

using Problem = std::string;  // empty: none

template <std::optional<giPoint2> RouteOptions::*point>
Problem set_point(RouteOptions& options, const std::string& value) {
    const std::vector<double> numbers = read_coordinates(value);
    if (numbers.size() != 2 || std::abs(numbers[0]) > largest_route_coordinate ||
        std::abs(numbers[1]) > largest_route_coordinate) {
        return quoted(value) + " is not a place; expected X,Y from -1e6 to 1e6";
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
        return "--goal-kind " + quoted(value) +
               " is unknown; expected point, line, line-with-gradient or moving-line";
    }
    options.kind = *kind;
    return {};
}

Problem set_gradient(RouteOptions& options, const std::string& value) {
    const auto number = read_coordinate(value);
    if (!number || !(*number > 0.0)) {
        return "--gradient " + quoted(value) + " is not a slope; expected a number above 0";
    }
    options.gradient = *number;
    return {};
}

Problem set_box(RouteOptions& options, const std::string& value) {
    const auto box = checked_box(read_coordinates(value));
    if (const auto* problem = std::get_if<std::string>(&box)) {
        return "--box " + quoted(value) + ": " + *problem;
    }
    options.box = std::get<PlaneBox>(box);
    return {};
}

Problem set_steps(RouteOptions& options, const std::string& value) {
    const auto steps = checked_steps(read_coordinates(value));
    if (const auto* problem = std::get_if<std::string>(&steps)) {
        return "--steps " + quoted(value) + ": " + *problem;
    }
    options.steps = std::get<giPoint2>(steps);
    return {};
}

Problem set_corners(RouteOptions& options, const std::string& value) {
    if (value != "cut" && value != "clear") {
        return "--corners " + quoted(value) + " is unknown; expected cut or clear";
    }
    options.cut_corners = value == "cut";
    return {};
}

constexpr ValueOption<RouteOptions> value_options[] = {
    {"--start", set_start},
    {"--goal", set_goal},
    {"--goal-kind", set_kind},
    {"--gradient", set_gradient},
    {"--box", set_box},
    {"--steps", set_steps},
    {"--corners", set_corners},
    {"--csv", set_output_file<RouteOptions, &RouteOptions::csv_file>},
    {"--svg", set_output_file<RouteOptions, &RouteOptions::svg_file>},
    {"--html", set_output_file<RouteOptions, &RouteOptions::html_file>},
};

constexpr SwitchOption<RouteOptions> switches[] = {
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
        return "--gradient has no meaning for --goal-kind " + kind +
               "; expected line-with-gradient or moving-line";
    }
    const std::string_view outputs[] = {options.csv_file, options.svg_file, options.html_file};
    Problem problem = check_input_is_kept(options.file_name, outputs);
    return problem.empty() ? check_outputs_differ(outputs) : problem;
}

constexpr OptionTable<RouteOptions> table{"route", value_options, switches,
                                          &set_file_name<RouteOptions>, check};

}  // namespace

std::variant<RouteOptions, std::string> read_route_options(
    const std::vector<std::string>& arguments) {
    return read_options(table, arguments);
}

}  // namespace nmk_app
