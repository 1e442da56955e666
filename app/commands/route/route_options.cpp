// route_options: the command line of `nmk route`.

#include "commands/route/route_options.h"

#include <cmath>
#include <span>
#include <string_view>
#include <vector>

#include "shell/command_result.h"
#include "shell/output_names.h"
#include "text/number_reader.h"

namespace nmk_route {

namespace {

using nmk_shell::Problem;

constexpr nmk_shell::Choice<bool> corner_rules[] = {{"cut", true}, {"clear", false}};

Problem set_point(std::optional<giPoint2>& point, const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    if (numbers.size() != 2 || std::abs(numbers[0]) > nmk_lattice::max_route_coordinate ||
        std::abs(numbers[1]) > nmk_lattice::max_route_coordinate) {
        return "expected X,Y from -1e6 to 1e6";
    }
    point = giPoint2(numbers[0], numbers[1]);
    return {};
}

nmk_shell::Setter point_setter(std::optional<giPoint2>& point) {
    return [&point](const std::string& value) { return set_point(point, value); };
}

/// Reads coordinates and keeps them if `checked` accepts them.
template <class Target, class Checked>
nmk_shell::Setter checked_setter(Target& target, Checked checked) {
    return [&target, checked](const std::string& value) -> Problem {
        const auto result = checked(nmk_text::read_coordinates(value));
        if (!result) {
            return result.error().message;
        }
        target = *result;
        return {};
    };
}

Problem check(const RouteOptions& options) {
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

void declare_search(nmk_shell::OptionTable& table, RouteOptions& options) {
    table.group("Route");
    table.option("--start", "X,Y", point_setter(options.start), "start of the route").is_required =
        true;
    table.option("--goal", "X,Y", point_setter(options.goal), "goal of the route").is_required =
        true;
    table.choice("--goal-kind", "NAME", options.kind, goal_kinds(), "where the route may end");
    table.number("--gradient", "G", options.gradient, nmk_shell::above_zero,
                 "largest change of y for each unit of x; for the last two kinds");
    table.option("--forward", options.forward, "only steps ahead in x");
    table.choice("--corners", "RULE", options.cut_corners, std::span(corner_rules),
                 "whether a diagonal step may pass beside a blocked cell (default clear for a "
                 "map, cut for a list)");
    table.group("Lists of blocked points");
    table.option("--box", "X0,Y0,X1,Y1", checked_setter(options.box, nmk_blocked::checked_box),
                 "box of a list, instead of the one in the file");
    table.option("--steps", "SX[,SY]", checked_setter(options.steps, nmk_blocked::checked_steps),
                 "steps of a list, instead of those in the file; its lattice goes through the "
                 "start");
}

void declare_outputs(nmk_shell::OptionTable& table, RouteOptions& options) {
    table.group("Files to write");
    table.output_file("--csv", options.csv_file, "the nodes of the route as a table");
    table.output_file("--svg", options.svg_file,
                      "a drawing of the map, the visited cells in their order, and the route");
    table.output_file("--html", options.html_file, "a page with the drawing and the figures");
    table.group("Output");
    table.option("--json", options.json, "print JSON instead of the text");
    table.option("--quiet", options.quiet, "print no text and no progress; --json still prints");
}

}  // namespace

void declare_route_options(nmk_shell::OptionTable& table, RouteOptions& options) {
    table.describe(
        "Reads grid maps in the octile text format (x counts columns from the left, y rows from "
        "the top, both from 0) and CSV lists of blocked points (rows x,y, box,X0,Y0,X1,Y1 and "
        "steps,SX,SY).");
    table.input_file("FILE", options.file_name, "the map or the list of blocked points");
    declare_search(table, options);
    declare_outputs(table, options);
    table.check([&options] { return check(options); });
    table.exit_code(nmk_shell::done, "a route");
    table.exit_code(nmk_shell::no_result,
                    "no route: the message names the visited cell nearest to the goal, and files "
                    "are written all the same; also after Ctrl-C, with nothing written");
    table.example("nmk route samples/workshop.map --start 3,36 --goal 92,36 --svg route.svg");
    table.example(
        "nmk route samples/clamps.csv --start 0,5 --goal 8,8 --goal-kind moving-line "
        "--gradient 0.5 --forward");
}

}  // namespace nmk_route
