// show_curves: reports, writes and draws curves.

#include "commands/curve/show_curves.h"

#include <algorithm>

#include "commands/curve/curve_archive.h"
#include "commands/curve/curve_files.h"
#include "commands/curve/curve_picture.h"
#include "commands/curve/curve_pieces.h"
#include "commands/curve/curve_points.h"
#include "commands/curve/curve_shapes.h"
#include "commands/curve/facts_text.h"
#include "commands/curve/or_throw.h"
#include "commands/curve/write_report.h"
#include "files/base_name.h"

namespace nmk_curve {

namespace {

using nmk_files::OutputFile;

constexpr std::size_t most_drawn = 10000;  // curves of one picture

std::string subtitle_of(const CurveReport& report) {
    if (report.curves.size() != 1) return std::to_string(report.curves.size()) + " curves";
    const CurveFacts& facts = report.curves[0];
    return std::string(kind_name(facts.kind)) + ", length " + length_text(facts.length);
}

std::string picture(const CurveReport& report, const std::vector<ngkCurvePtr3>& curves) {
    if (curves.empty() || curves.size() > most_drawn) {
        throw nmk_text::Error{report.name, 0,
                              "has " + std::to_string(curves.size()) +
                                  " curves; --svg expected from 1 to " +
                                  std::to_string(most_drawn)};
    }
    CurveScene scene{
        nmk_files::base_name(report.name), subtitle_of(report), curves, report.curves, {}, {}, {}};
    scene.samples = report.samples;
    return curve_picture(scene);
}

const ngkCurvePtr3& only_curve(const CurveReport& report, const std::vector<ngkCurvePtr3>& curves) {
    if (curves.size() == 1) return curves[0];
    throw nmk_text::Error{report.name, 0,
                          "has " + std::to_string(curves.size()) +
                              " curves; expected one to write or list (see --curve)"};
}

/// The points of the only curve: those asked for, or those of its polygon.
std::vector<giPoint3> listed_points(const CurveOptions& options, const CurveReport& report,
                                    const std::vector<ngkCurvePtr3>& curves) {
    if (!report.samples.empty()) return report.samples;
    return or_throw(curve_points(only_curve(report, curves), std::nullopt, options.tolerance));
}

std::string content_of_output(const CurveOptions& options, const CurveReport& report,
                              const std::vector<ngkCurvePtr3>& curves) {
    switch (output_format(options.output_file).value_or(OutputFormat::json)) {
        case OutputFormat::csv:
            return points_csv(listed_points(options, report, curves));
        case OutputFormat::archive:
            return or_throw(archive_of_curve(only_curve(report, curves)));
        default:
            return report_json(report);
    }
}

int show(const CurveOptions& options, CurveReport report, const std::vector<ngkCurvePtr3>& curves,
         std::ostream& out, std::ostream& err) {
    report.origins.resize(curves.size());
    for (const ngkCurvePtr3& curve : curves) {
        report.curves.push_back(curve_facts(curve, options.tolerance));
    }
    if (options.sample_count && curves.size() == 1) {
        report.samples = or_throw(curve_points(curves[0], options.sample_count, options.tolerance));
    }
    std::vector<OutputFile> files;
    if (!options.output_file.empty()) {
        files.push_back({options.output_file, content_of_output(options, report, curves)});
    }
    if (!options.svg_file.empty()) files.push_back({options.svg_file, picture(report, curves)});
    const std::string data = options.csv    ? points_csv(listed_points(options, report, curves))
                             : options.json ? report_json(report)
                                            : "";
    return write_report(options, files, report_text(report), data, out, err);
}

}  // namespace

int show_shape(const CurveOptions& options, std::ostream& out, std::ostream& err) {
    const std::vector<ngkCurvePtr3> curves = {or_throw(make_shape(options))};
    return show(options, {action_name(options.action), {}, {}, {}, {}}, curves, out, err);
}

int show_file(const CurveOptions& options, std::ostream& out, std::ostream& err) {
    CurveFile file = or_throw(read_curves(options.files[0], options.mm_of_unit));
    if (options.curve || options.sample_count) {
        file.curves = {or_throw(chosen_curve(file, options.curve))};
    }
    CurveReport report{file.name, {}, {}, file.notes, {}};
    std::vector<ngkCurvePtr3> curves;
    for (const FileCurve& each : file.curves) {
        curves.push_back(each.curve);
        report.origins.push_back(each.origin);
    }
    return show(options, std::move(report), curves, out, err);
}

int show_pieces(const CurveOptions& options, std::ostream& out, std::ostream& err) {
    const CurveFile file = or_throw(read_curves(options.files[0], options.mm_of_unit));
    const FileCurve whole = or_throw(chosen_curve(file, options.curve));
    const auto curves = or_throw(curve_pieces(whole.curve, options.piece));
    return show(options, {file.name, {}, {}, file.notes, {}}, curves, out, err);
}

}  // namespace nmk_curve
