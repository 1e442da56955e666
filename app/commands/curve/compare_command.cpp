// compare_command: `nmk curve compare`.

#include "commands/curve/compare_command.h"

#include <string>

#include "commands/curve/compared_curves.h"
#include "commands/curve/curve_files.h"
#include "commands/curve/curve_picture.h"
#include "commands/curve/facts_json.h"
#include "commands/curve/facts_text.h"
#include "commands/curve/or_throw.h"
#include "commands/curve/write_report.h"
#include "files/base_name.h"
#include "shell/command_result.h"
#include "text/wrapped_text.h"

namespace nmk_curve {

namespace {

constexpr int schema = 1;

struct ComparedFile {
    std::string name;
    ngkCurvePtr3 curve;
};

ComparedFile read(const CurveOptions& options, std::size_t number) {
    const CurveFile file = or_throw(read_curves(options.files[number], options.mm_of_unit));
    const std::optional<int> curve = file.curves.size() > 1 ? options.curve : std::nullopt;
    ComparedFile compared{file.name, or_throw(chosen_curve(file, curve)).curve};
    if (!compared.curve->t_at(0.0).is_set() || !compared.curve->t_at(1.0).is_set()) {
        throw nmk_text::Error{file.name, 0, "the curve lacks an end; expected one with both"};
    }
    return compared;
}

std::string words_of(const CurveComparison& comparison, double tolerance) {
    const std::string distance = length_text(comparison.distance) + " mm apart";
    switch (comparison.difference) {
        case Difference::none:
            return "the same within " + length_text(tolerance) + " mm";
        case Difference::start:
            return "the starts are " + distance;
        case Difference::end:
            return "the ends are " + distance;
        default:
            return distance + " at " + length_text(comparison.at_length) + " mm from the start";
    }
}

std::string text_of(const CurveComparison& comparison, double tolerance) {
    const bool is_same = comparison.difference == Difference::none;
    std::string text = is_same ? "The same within " + length_text(tolerance) + " mm."
                               : "Different: " + words_of(comparison, tolerance) + ".";
    text += "\nLengths " + length_text(comparison.length_of_a) + " and " +
            length_text(comparison.length_of_b) + " mm.";
    if (!is_same) {
        text += "\nThere the first is at " + place_text(comparison.on_a) + ", the second at " +
                place_text(comparison.on_b) + "; " + length_text(comparison.allowed) +
                " mm are allowed.";
    }
    if (comparison.difference == Difference::course) {
        text += "\nSamples are up to " + length_text(comparison.greatest) + " mm apart.";
    }
    return nmk_text::wrapped(text, 0, nmk_text::terminal_columns);
}

std::string comparison_json(const CurveComparison& comparison, double tolerance) {
    using nmk_text::Json;
    const bool is_same = comparison.difference == Difference::none;
    const auto if_different = [&](Json value) { return is_same ? Json() : std::move(value); };
    return nmk_text::json_document(
        {{"schema", schema},
         {"same", is_same},
         {"tolerance", tolerance},
         {"lengths", {comparison.length_of_a, comparison.length_of_b}},
         {"difference", if_different(difference_key(comparison.difference))},
         {"at_length", if_different(comparison.at_length)},
         {"first", json_of(comparison.on_a)},
         {"second", json_of(comparison.on_b)},
         {"distance", if_different(comparison.distance)},
         {"allowed", if_different(comparison.allowed)}});
}

std::string picture_of(const CurveOptions& options, const ComparedFile& a, const ComparedFile& b,
                       const CurveComparison& comparison) {
    CurveScene scene{"Comparison",
                     words_of(comparison, options.tolerance),
                     {a.curve, b.curve},
                     {},
                     {nmk_files::base_name(a.name), nmk_files::base_name(b.name)},
                     {},
                     {}};
    for (const ngkCurvePtr3& curve : scene.curves) {
        scene.facts.push_back(curve_facts(curve, options.tolerance));
    }
    if (comparison.on_a.is_set() && comparison.on_b.is_set()) {
        scene.found = FoundPlace{comparison.on_a, comparison.on_b, "difference"};
    }
    return curve_picture(scene);
}

}  // namespace

int compare_files(const CurveOptions& options, std::ostream& out, std::ostream& err) {
    const ComparedFile a = read(options, 0);
    const ComparedFile b = read(options, 1);
    const CurveComparison comparison = compare_curves(a.curve, b.curve, options.tolerance);
    std::vector<nmk_files::OutputFile> files;
    if (!options.svg_file.empty()) {
        files.push_back({options.svg_file, picture_of(options, a, b, comparison)});
    }
    const int code =
        write_report(options, files, text_of(comparison, options.tolerance),
                     options.json ? comparison_json(comparison, options.tolerance) : "", out, err);
    return code == nmk_shell::done && comparison.difference != Difference::none
               ? nmk_shell::no_result
               : code;
}

}  // namespace nmk_curve
