// curve_rules: which arguments of `nmk curve` go together.

#include "commands/curve/curve_rules.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "commands/curve/curve_options.h"
#include "commands/curve/curve_points.h"
#include "files/read_whole_file.h"
#include "shell/output_names.h"
#include "text/ascii.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"

namespace nmk_curve {

namespace {

using nmk_shell::Problem;

/// An option, whether it is given, and the actions that take it.
struct Use {
    const char* option;
    bool is_given;
    std::initializer_list<Action> actions;
};

Problem check_uses(Action action, std::initializer_list<Use> uses) {
    for (const Use& use : uses) {
        const bool applies =
            std::find(use.actions.begin(), use.actions.end(), action) != use.actions.end();
        if (use.is_given && !applies) {
            return std::string(use.option) + " does not apply to " + action_name(action);
        }
    }
    return {};
}

Problem check_shape_options(const CurveOptions& options) {
    using enum Action;
    const ShapeOptions& shape = options.shape;
    return check_uses(
        options.action,
        {{"--centre", shape.centre.is_set(), {arc}},
         {"--radius", shape.radius.has_value(), {arc, circle, filleted_rectangle}},
         {"--start-tangent", shape.start_tangent.is_set(), {arc, bezier}},
         {"--end-tangent", shape.end_tangent.is_set(), {arc, bezier}},
         {"--sweep", shape.sweep.has_value(), {arc}},
         {"--minimum-angle", shape.minimum_angle.has_value(), {arc}},
         {"--from-angle", shape.from_angle.has_value(), {arc}},
         {"--to-angle", shape.to_angle.has_value(), {arc}},
         {"--normal", shape.normal.is_set(), {arc, circle, rectangle, filleted_rectangle}},
         {"--reference", shape.reference.is_set(), {circle, rectangle, filleted_rectangle}},
         {"--direction", shape.direction.is_set(), {half_line, infinite_line}},
         {"--size", shape.size.has_value(), {rectangle, filleted_rectangle}},
         {"--magnitudes", shape.magnitudes.has_value(), {bezier}},
         {"--start-magnitude", shape.start_magnitude.has_value(), {bezier}},
         {"--end-magnitude", shape.end_magnitude.has_value(), {bezier}}});
}

Problem check_file_options(const CurveOptions& options) {
    using enum Action;
    return check_uses(options.action,
                      {{"--units", options.mm_of_unit.has_value(), {info, compare, closest, split}},
                       {"--curve", options.curve.has_value(), {info, compare, closest, split}},
                       {"--piece", options.piece.has_value(), {split}}});
}

Problem check_output_options(const CurveOptions& options) {
    const bool has_points = makes_shape(options.action) || options.action == Action::info;
    if (!has_points && options.sample_count) {
        return "--points does not apply to " + action_name(options.action);
    }
    if (!has_points && (options.csv || !options.output_file.empty())) {
        return std::string(options.csv ? "--csv" : "-o") + " does not apply to " +
               action_name(options.action);
    }
    if (options.csv && options.json) return "--csv and --json exclude each other";
    if (!options.output_file.empty() && !output_format(options.output_file)) {
        return "-o " + nmk_text::quoted(options.output_file) +
               ": expected a name that ends in .ngk, .csv or .json";
    }
    const std::string_view outputs[] = {options.output_file, options.svg_file};
    for (const std::string& file : options.files) {
        Problem problem = nmk_shell::check_input_is_kept(file, outputs);
        if (!problem.empty()) return problem;
    }
    return nmk_shell::check_outputs_differ(outputs);
}

Problem take_points(CurveOptions& options, std::size_t first) {
    for (std::size_t i = first; i < options.words.size(); ++i) {
        const std::optional<giPoint3> point = point_of_text(options.words[i]);
        if (!point) {
            return "point " + nmk_text::quoted(options.words[i]) +
                   ": expected X,Y or X,Y,Z, numbers from -1e9 to 1e9";
        }
        options.points.push_back(*point);
    }
    return {};
}

Problem take_words(CurveOptions& options) {
    if (makes_shape(options.action)) return take_points(options, 0);
    const bool compares = options.action == Action::compare;
    const bool has_point = options.action == Action::closest;
    const std::size_t files = compares ? 2 : 1;
    if (options.words.size() != files + (has_point ? 1U : 0U)) {
        return action_name(options.action) + ": expected " +
               (compares    ? "two files"
                : has_point ? "a file and a point X,Y,Z"
                            : "one file");
    }
    options.files.assign(options.words.begin(),
                         options.words.begin() + static_cast<std::ptrdiff_t>(files));
    const bool lacks_name = std::any_of(options.files.begin(), options.files.end(),
                                        [](const std::string& name) { return name.empty(); });
    if (lacks_name) return action_name(options.action) + ": expected the name of a file";
    if (compares && options.files[0] == nmk_files::standard_stream &&
        options.files[1] == nmk_files::standard_stream) {
        return "compare: standard input can be read only once";
    }
    return take_points(options, files);
}

}  // namespace

std::optional<giPoint3> point_of_text(const std::string& text) {
    const std::vector<double> numbers = nmk_text::read_coordinates(text);
    if (numbers.size() != 2 && numbers.size() != 3) return std::nullopt;
    return giPoint3(numbers[0], numbers[1], numbers.size() == 3 ? numbers[2] : 0.0);
}

nmk_shell::Problem check_curve_options(CurveOptions& options) {
    Problem problem = take_words(options);
    for (const auto check : {check_shape_options, check_file_options, check_output_options}) {
        if (problem.empty()) problem = check(options);
    }
    return problem;
}

}  // namespace nmk_curve
