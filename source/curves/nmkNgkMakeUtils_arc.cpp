#include <geometry/giLine3.h>
#include <ngk/ngkArc.h>
#include <ngk/ngkCircle.h>
#include <ngk/ngkLine.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <cmath>

#include "circle_plane.h"
#include "curve_handle.h"
#include "tangent_angle.h"

using nmk_curves::coincidence_in_space;
using nmk_curves::handle_of;

namespace {

// A circle's radius through three points. At most this: a line instead.
constexpr double smallest_radius = 1e-05;

// The start tangent's part along the radius. Above: not at a right angle, and no arc. A length,
// since it is multiplied by the radius.
constexpr double largest_slant = 0.0001;

giPoint3 midpoint(const giPoint3& a, const giPoint3& b) { return a + (b - a) * 0.5; }

// As long as the tolerance, at `point`.
ngkCurvePtr3 tiny_arc(const giPoint3& point, double tolerance) {
    const giVector3 x = giUnitVec3(giAxis::x).vector();
    const ngkCircle3 circle(giWorkplane3(point - x, giUnitVec3(giAxis::y), giUnitVec3(giAxis::z)),
                            1.0);
    const ngkCurvePoint3 nearest = circle.closest_point(point);
    if (!nearest.is_set()) return ngkCurvePtr3();
    return handle_of(new ngkArc3(circle, nearest.t.value, nearest.t.value + tolerance));
}

ngkCurvePtr3 line_or_tiny_arc(const giPoint3& start, const giPoint3& end) {
    const double tolerance = coincidence_in_space();
    if (start.coincident(end, tolerance)) return tiny_arc(start, tolerance);
    return handle_of(new ngkLine3(start, end));
}

// The normal of an arc, before it is known which way round it runs; zero where all three directions
// are on one line.
giVector3 normal_of(const giVector3& to_start, const giVector3& to_middle,
                    const giVector3& to_end) {
    const giVector3 normal = to_start.cross(to_middle);
    return normal.is_zero() ? to_start.cross(to_end) : normal;
}

// The normal about which the middle comes before the end.
giUnitVec3 normal_through_middle(const giUnitVec3& normal, const giVector3& to_start,
                                 const giVector3& to_middle, const giVector3& to_end) {
    const bool is_end_first =
        to_start.apparent_angle(to_end, normal) < to_start.apparent_angle(to_middle, normal);
    return is_end_first ? -normal : normal;
}

ngkCurvePtr3 arc_between(const giPoint3& start, const giPoint3& end, const giWorkplane3& plane,
                         double radius) {
    return handle_of(new ngkArc3(ngkCircle3(plane, radius), start, end));
}

}  // namespace

ngkCurvePtr3 nmkNgkMakeUtils::make_arc(const giPoint3& start, const giPoint3& middle,
                                       const giPoint3& end) {
    const giCircle3 circle(start, middle, end);
    if (circle.invalid()) return line_or_tiny_arc(start, end);
    const giPoint3& centre = circle.centre();
    const giUnitVec3 to_start = giUnitVec3::direction_of(start - centre);
    const giVector3 to_middle = giUnitVec3::direction_of(middle - centre).vector();
    const giVector3 to_end = giUnitVec3::direction_of(end - centre).vector();
    const giVector3 across = normal_of(to_start.vector(), to_middle, to_end);
    if (across.is_zero()) return line_or_tiny_arc(start, end);
    if (start.coincident(centre, smallest_radius)) return handle_of(new ngkLine3(start, end));
    const giUnitVec3 normal =
        normal_through_middle(giUnitVec3(across), to_start.vector(), to_middle, to_end);
    return arc_between(start, end, giWorkplane3(centre, to_start, normal), circle.radius());
}

ngkCurvePtr3 nmkNgkMakeUtils::make_arc(const giPoint3& start, const giPoint3& end,
                                       const giPoint3& centre, const giUnitVec3& start_tangent,
                                       double tolerance) {
    if (!start.is_set() || !end.is_set() || !centre.is_set() || !start_tangent.is_set())
        return ngkCurvePtr3();
    const giVector3 tangent = start_tangent.vector();
    const double radius = start.distance(centre);
    // Both so written that NaN is refused too.
    if (!(std::abs(radius - end.distance(centre)) <= tolerance)) return ngkCurvePtr3();
    // Deliberate: a fixed length that does not follow the tolerance.
    if (!(std::abs((start - centre).dot(tangent)) <= largest_slant)) return ngkCurvePtr3();
    const bool is_closed = start.coincident(end, tolerance) != 0;
    // Deliberate: the centre need not be in the plane of tangent and chord.
    const giUnitVec3 normal = giUnitVec3::direction_of(is_closed ? (start - centre).cross(tangent)
                                                                 : tangent.cross(end - start));
    if (!normal.is_set()) return ngkCurvePtr3();
    const giWorkplane3 plane(centre, start_tangent, normal);
    return is_closed ? make_circle(plane, radius) : arc_between(start, end, plane, radius);
}

ngkCurvePtr3 nmkNgkMakeUtils::make_arc(const giPoint3& start, const giPoint3& end,
                                       const giUnitVec3& start_tangent,
                                       const giUnitVec3& end_tangent, double tolerance) {
    if (start.coincident(end, tolerance) || !start_tangent.is_set() || !end_tangent.is_set())
        return ngkCurvePtr3();
    int invalid = 0;
    int straight = 0;
    curve_geometry_info(start, end, start_tangent, end_tangent, invalid, straight, tolerance);
    if (invalid) return ngkCurvePtr3();
    if (straight) return make_line(start, end);

    const giVector3 chord = end - start;
    const giVector3 start_normal = start_tangent.vector().cross(chord);
    const giVector3 end_normal = end_tangent.vector().cross(chord);
    if (start_normal.length() < tolerance || end_normal.length() < tolerance) return ngkCurvePtr3();
    const giAngle angle = nmk_curves::tangent_angle(start, end, tolerance);
    const bool is_planar =
        start_normal.parallel(end_normal, angle) || start_normal.parallel(-end_normal, angle);
    if (!is_planar) return ngkCurvePtr3();

    const giLine3 from_start(start, start_tangent.vector().cross(start_normal));
    const giLine3 from_end(end, end_tangent.vector().cross(end_normal));
    giPoint3 centre;
    giPoint3 on_other;
    const int crossing = from_start.closest_points(from_end, centre, on_other);
    if (crossing == 1) {
        if (!(from_start.distance(end) < tolerance)) return ngkCurvePtr3();
        centre = midpoint(start, end);
    } else if (!(std::abs(start.distance(centre) - end.distance(centre)) < tolerance)) {
        return ngkCurvePtr3();
    }
    if (!check_arc_tangents_compatible(start, end, centre, start_tangent, end_tangent, tolerance))
        return ngkCurvePtr3();
    return make_arc(start, end, centre, start_tangent, tolerance);
}

ngkCurvePtr3 nmkNgkMakeUtils::make_arc(const giPoint3& start, const giPoint3& end,
                                       const giUnitVec3& start_tangent) {
    const double tolerance = coincidence_in_space();
    const giAngle zero_angle = ngk_resource_table_inquire().value(ngk_TOLZEROANGLE);
    if (!start_tangent.is_set() || start.coincident(end, tolerance)) return ngkCurvePtr3();
    const giVector3 tangent = start_tangent.vector();
    const giVector3 chord = end - start;
    if (tangent.parallel(chord, zero_angle)) return make_line(start, end);
    if (tangent.parallel(-chord, zero_angle)) return ngkCurvePtr3();
    const giVector3 across = tangent.cross(chord);
    const giLine3 radius(start, across.cross(tangent));
    const giLine3 bisector(midpoint(start, end), across.cross(chord));
    giPoint3 centre;
    giPoint3 on_bisector;
    const bool is_found = radius.closest_points(bisector, centre, on_bisector) == 0 &&
                          centre.coincident(on_bisector, tolerance);
    return is_found ? make_arc(start, end, centre, start_tangent, tolerance) : ngkCurvePtr3();
}

ngkCurvePtr3 nmkNgkMakeUtils::make_arc(const giPoint3& start, const giPoint3& centre,
                                       const giUnitVec3& start_tangent, double sweep_in_degrees,
                                       double tolerance, const giAngle& minimum_angle) {
    if (!start.is_set() || !centre.is_set() || !start_tangent.is_set()) return ngkCurvePtr3();
    // Compared as angles, not in degrees: degrees that went into an angle may come out changed in
    // their last bit. Both so written that NaN is refused too.
    const giAngle sweep(giDegrees, sweep_in_degrees);
    if (!(sweep_in_degrees >= 0.0) || !(sweep >= minimum_angle)) return ngkCurvePtr3();
    const giVector3 radius = start - centre;
    const giUnitVec3 normal = giUnitVec3::direction_of(radius.cross(start_tangent.vector()));
    if (!normal.is_set()) return ngkCurvePtr3();
    if (giAngle(giDegrees, 360.0 - sweep_in_degrees) >= minimum_angle) {
        const giXform3 turn = giXform3::rotation(giPoint3(giOrigin::origin), normal, sweep);
        return make_arc(start, centre + turn.transform(radius), centre, start_tangent, tolerance);
    }
    return make_circle(giWorkplane3(centre, start_tangent, normal), radius.length());
}

ngkCurvePtr3 nmkNgkMakeUtils::make_arc(const ngkT& start, const ngkT& end,
                                       const giCircle3& circle) {
    if (start.segment == -1 || end.segment == -1 || circle.invalid()) return ngkCurvePtr3();
    const ngkCircle3 full(nmk_curves::circle_plane(circle), circle.radius());
    return handle_of(new ngkArc3(full, start.value, end.value));
}

bool nmkNgkMakeUtils::check_arc_tangents_compatible(const giPoint3& start, const giPoint3& end,
                                                    const giPoint3& centre,
                                                    const giUnitVec3& start_tangent,
                                                    const giUnitVec3& end_tangent,
                                                    double tolerance) {
    const giVector3 at_start = start_tangent.vector().cross(centre - start);
    const giVector3 at_end = end_tangent.vector().cross(centre - end);
    return at_start.parallel(at_end, nmk_curves::tangent_angle(start, end, tolerance)) != 0;
}
