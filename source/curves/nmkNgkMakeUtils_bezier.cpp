#include <geometry/giLine3.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngk_flue_bztmag.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <array>
#include <cmath>

#include "curve_handle.h"
#include "tangent_angle.h"

namespace {

// The cosine of the angle of a tangent and the chord. At or below: counts as this, so that no
// magnitude is more than twice the chord.
constexpr double smallest_cosine = 0.5;

// How long a tangent is, so that its part along the chord is the chord.
double magnitude_by_chord(const giUnitVec3& tangent, const giVector3& chord) {
    const double cosine = tangent.vector().dot(giUnitVec3::direction_of(chord).vector());
    return chord.length() / (cosine <= smallest_cosine ? smallest_cosine : cosine);
}

ngkCurvePtr3 bezier_through(const giPoint3coDynArr& points) {
    auto* const curve = new ngkBezCurve3(points.size() - 1);
    curve->set_points({points.array(), static_cast<std::size_t>(points.size())});
    return nmk_curves::handle_of(curve);
}

giPoint3coDynArr cubic_points(const giPoint3& start, const giPoint3& end,
                              const giUnitVec3& start_tangent, const giUnitVec3& end_tangent,
                              double start_magnitude, double end_magnitude) {
    return {start, start + start_tangent.vector() * start_magnitude / 3.0,
            end - end_tangent.vector() * end_magnitude / 3.0, end};
}

}  // namespace

ngkCurvePtr3 nmkNgkMakeUtils::make_bezier_curve(const giPoint3& start, const giPoint3& end,
                                                const giUnitVec3& start_tangent,
                                                const giUnitVec3& end_tangent) {
    return make_bezier_curve(start, end, start_tangent, end_tangent, nmkNGKBezierMagnitudeChord);
}

ngkCurvePtr3 nmkNgkMakeUtils::make_bezier_curve(const giPoint3& start, const giPoint3& end,
                                                const giUnitVec3& start_tangent,
                                                const giUnitVec3& end_tangent,
                                                nmkNGKBezierMagnitudeMethod method) {
    // Deliberate: read once, so that curves of one process are classified alike.
    static const double tolerance = nmk_curves::coincidence_in_space();
    int invalid = 0;
    int straight = 0;
    curve_geometry_info(start, end, start_tangent, end_tangent, invalid, straight, tolerance);
    if (invalid) return ngkCurvePtr3();
    if (straight) return make_line(start, end);
    const int degree = start_tangent.is_set() && end_tangent.is_set() ? 3 : 2;
    giPoint3coDynArr points;
    const int is_filled = calculate_bezier_control_points(degree, start, end, start_tangent,
                                                          end_tangent, method, points);
    return is_filled ? bezier_through(points) : ngkCurvePtr3();
}

ngkCurvePtr3 nmkNgkMakeUtils::make_bezier_curve(const giPoint3& start, const giPoint3& end,
                                                const giUnitVec3& start_tangent,
                                                const giUnitVec3& end_tangent,
                                                double start_magnitude, double end_magnitude) {
    return bezier_through(
        cubic_points(start, end, start_tangent, end_tangent, start_magnitude, end_magnitude));
}

int nmkNgkMakeUtils::calculate_bezier_control_points(
    int degree, const giPoint3& start, const giPoint3& end, const giUnitVec3& start_tangent,
    const giUnitVec3& end_tangent, nmkNGKBezierMagnitudeMethod method, giPoint3coDynArr& points) {
    const giVector3 chord = end - start;
    const bool has_start = start_tangent.is_set();
    const bool has_end = end_tangent.is_set();
    if (degree == 2 && has_start != has_end) {
        const giUnitVec3& tangent = has_start ? start_tangent : end_tangent;
        const giVector3 inner = tangent.vector() * (magnitude_by_chord(tangent, chord) / 2.0);
        points = {start, has_start ? start + inner : end - inner, end};
        return 1;
    }
    if (degree != 3 || !has_start || !has_end) return 0;
    double first = magnitude_by_chord(start_tangent, chord);
    double second = magnitude_by_chord(end_tangent, chord);
    if (method != nmkNGKBezierMagnitudeChord)
        ngk_flue_bztmag(start, end, start_tangent, end_tangent, method, first, second);
    points = cubic_points(start, end, start_tangent, end_tangent, first, second);
    return 1;
}

void nmkNgkMakeUtils::curve_geometry_info(const giPoint3& start, const giPoint3& end,
                                          const giUnitVec3& start_tangent,
                                          const giUnitVec3& end_tangent, int& invalid,
                                          int& straight, double tolerance) {
    invalid = start.coincident(end, tolerance);
    straight = 0;
    if (invalid) return;
    if (curve_geometry_info_invalid_tang(start, end, start_tangent, end_tangent, invalid, straight,
                                         tolerance))
        return;
    const giAngle angle = nmk_curves::tangent_angle(start, end, tolerance);
    const bool is_same_sense = start_tangent.parallel(end_tangent, angle) != 0;
    if (!is_same_sense && !start_tangent.parallel(-end_tangent, angle)) return;
    const giVector3 along = start_tangent.vector();
    if (giLine3(start, along).distance(end) > tolerance) return;
    const giPoint3 ahead = start + along * start.distance(end);
    straight = is_same_sense && ahead.coincident(end, tolerance) ? 1 : 0;
    invalid = straight ? 0 : 1;
}

int nmkNgkMakeUtils::curve_geometry_info_invalid_tang(const giPoint3& start, const giPoint3& end,
                                                      const giUnitVec3& start_tangent,
                                                      const giUnitVec3& end_tangent, int& invalid,
                                                      int& straight, double tolerance) {
    if (start_tangent.is_set() && end_tangent.is_set()) return 0;
    invalid = 0;
    straight = !start_tangent.is_set() && !end_tangent.is_set() ? 1 : 0;
    if (straight) return 1;
    // Deliberate: a span with the end tangent only is looked at from its end, so that this tangent
    // has to point back to the start for a straight one, while a curve has it in the direction of
    // travel.
    const bool has_start = start_tangent.is_set();
    const giVector3 tangent = (has_start ? start_tangent : end_tangent).vector();
    const giVector3 chord = end - start;
    const giAngle angle = nmk_curves::tangent_angle(start, end, tolerance);
    if (!tangent.parallel(chord, angle) && !tangent.parallel(-chord, angle)) return 1;
    const giPoint3 ahead = (has_start ? start : end) + tangent * chord.length();
    straight = ahead.coincident(has_start ? end : start, tolerance);
    invalid = straight ? 0 : 1;
    return 1;
}
