// curve_points: points of a curve, as a table.

#include "commands/curve/curve_points.h"

#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>

#include "text/ascii.h"
#include "text/number_format.h"

namespace nmk_curve {

namespace {

std::vector<giPoint3> spaced_points(const ngkCurvePtr3& curve, int count, double tolerance) {
    giPoint3coPageArr points;
    doublecoPageArr fractions;
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(curve, count, tolerance, points, fractions);
    return {points.begin(), points.end()};
}

std::vector<giPoint3> polygon_points(const ngkCurvePtr3& curve, double tolerance) {
    const ngkPolyline3 polygon = curve->curve_polygon(ngkPolygonizeTRP3(tolerance));
    return {polygon.points().begin(), polygon.points().end()};
}

}  // namespace

std::optional<OutputFormat> output_format(std::string_view file_name) {
    const std::string name = nmk_text::lower_case(file_name);
    if (name.ends_with(".csv")) return OutputFormat::csv;
    if (name.ends_with(".json")) return OutputFormat::json;
    if (name.ends_with(".ngk")) return OutputFormat::archive;
    return std::nullopt;
}

nmk_text::Result<std::vector<giPoint3>> curve_points(const ngkCurvePtr3& curve,
                                                     std::optional<int> count, double tolerance) {
    std::vector<giPoint3> points =
        count ? spaced_points(curve, *count, tolerance) : polygon_points(curve, tolerance);
    if (points.empty()) {
        return nmk_text::Error{{}, 0, "the curve has no points to list; expected one with ends"};
    }
    return points;
}

std::string points_csv(const std::vector<giPoint3>& points) {
    std::string text = "x,y,z\n";
    for (const giPoint3& point : points) {
        text += nmk_text::exact_number(point.x) + "," + nmk_text::exact_number(point.y) + "," +
                nmk_text::exact_number(point.z) + "\n";
    }
    return text;
}

}  // namespace nmk_curve
