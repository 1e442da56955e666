// nmkNgkMakeUtils: curves from points, tangents and circles.
//
// Every function returns a counted handle to a new curve. An empty handle is the only report of
// failure: nothing throws, and no handle but that of a half or infinite line holds an invalid
// curve. Unset and non-finite input gives an empty handle where nothing else is said.
//
// Lengths are in the unit of the coordinates. Where no tolerance is given, those of the kernel's
// table are read at the call: ngk_TOLCOINCPOINT3D, ngk_TOLCOINCPOINT2D, ngk_TOLZEROANGLE.
// Coincident means at most the tolerance apart. Where a tolerance and a chord are known, tangents
// are compared with the angle min(asin(tolerance / chord), 0.0001 radians).
#pragma once

#include <geometry/giCircle3.h>
#include <geometry/giPoint3Arrays.h>
#include <geometry/giWorkplane3.h>
#include <ngk/ngkCurve.h>
#include <nmktoolbox/export.h>

/// How the lengths of the end tangents of a Bezier curve are chosen.
/// Any other value is taken as nmkNGKBezierMagnitudeArc.
enum nmkNGKBezierMagnitudeMethod : int {
    nmkNGKBezierMagnitudeChord = 0,  // by the chord's part along the tangent
    nmkNGKBezierMagnitudeArc = 1     // by ngk_flue_bztmag, as on a circular arc
};

class NMKTOOLBOX_EXPORT nmkNgkMakeUtils {
  public:
    /// The arc from `start` through `middle` to `end`, whichever way round is the longer.
    ///
    /// A line from start to end where the points are on one line, or so near to each other that
    /// the radius is at most 1e-05. Where start and end coincide then, a tiny arc at the start, as
    /// long as the tolerance: three equal points never give an empty handle.
    static ngkCurvePtr3 make_arc(const giPoint3& start, const giPoint3& middle,
                                 const giPoint3& end);

    /// The arc about `centre` that leaves `start` along its tangent; a full circle where the ends
    /// coincide.
    ///
    /// Empty where the distances of the ends from the centre differ by more than the tolerance, or
    /// the tangent is not at a right angle to the radius: their product exceeds 0.0001, whatever
    /// the tolerance. Whether the centre is in the plane of tangent and chord is not checked.
    static ngkCurvePtr3 make_arc(const giPoint3& start, const giPoint3& end, const giPoint3& centre,
                                 const giUnitVec3& start_tangent, double tolerance);

    /// The arc between two points with the tangents given, both in the direction of travel; a line
    /// where both are along the chord. Empty where no single arc has these tangents.
    static ngkCurvePtr3 make_arc(const giPoint3& start, const giPoint3& end,
                                 const giUnitVec3& start_tangent, const giUnitVec3& end_tangent,
                                 double tolerance);

    /// The arc that leaves `start` along its tangent and ends at `end`; a line where the tangent
    /// points at the end. Empty where it points away from it, or the ends coincide.
    static ngkCurvePtr3 make_arc(const giPoint3& start, const giPoint3& end,
                                 const giUnitVec3& start_tangent);

    /// The arc about `centre` that leaves `start` along its tangent and turns by that angle; a full
    /// circle where it turns by more than 360 degrees less `minimum_angle`, or where its end
    /// coincides with the start. Empty below 0 and below `minimum_angle`.
    ///
    /// An arc's tangent must be at a right angle to the radius; that of a full circle need not be.
    static ngkCurvePtr3 make_arc(const giPoint3& start, const giPoint3& centre,
                                 const giUnitVec3& start_tangent, double sweep_in_degrees,
                                 double tolerance, const giAngle& minimum_angle);

    /// The arc on a circle between two of its angles in radians, counter-clockwise about its normal
    /// from the same beginning as with make_circle. Empty for an unset parameter.
    static ngkCurvePtr3 make_arc(const ngkT& start, const ngkT& end, const giCircle3& circle);

    /// The full circle. It begins at the cross product of the Y axis of the world and the normal,
    /// or of the X axis where the normal is along Y within 0.0001 radians.
    static ngkCurvePtr3 make_circle(const giCircle3& circle);

    /// The full circle about the plane's origin; it begins on the plane's X axis.
    static ngkCurvePtr3 make_circle(const giWorkplane3& plane, double radius);

    /// The line between two points; empty where they coincide.
    static ngkCurvePtr3 make_line(const giPoint3& start, const giPoint3& end);
    static ngkCurvePtr2 make_line(const giPoint2& start, const giPoint2& end);

    /// The ray from `point`, and the line through it. Nothing is checked: an unset argument gives a
    /// handle to an invalid curve.
    static ngkCurvePtr3 make_half_line(const giPoint3& point, const giUnitVec3& direction);
    static ngkCurvePtr3 make_inf_line(const giPoint3& point, const giUnitVec3& direction);

    /// A curve that stays at `point`: a Bezier curve of degree 1.
    static ngkCurvePtr3 make_point_curve(const giPoint3& point);

    /// The polyline through the points, or through the first `count` of them, without those that
    /// coincide with the last point that was kept. Two points are joined by a line.
    ///
    /// Empty for fewer than two points, for more than there are, and where one of them is unset.
    /// Three or more points that all coincide give a polyline of one point.
    static ngkCurvePtr3 make_polyline(const giPoint3coDList& points);
    static ngkCurvePtr3 make_polyline(const giPoint3coDynArr& points);
    static ngkCurvePtr3 make_polyline(const giPoint3coDynArr& points, int count);

    /// The rectangle from the plane's origin along its X and Y axes, a closed polyline of five
    /// points. A size may be negative; empty where either is at most the tolerance.
    static ngkCurvePtr3 make_rectangle(const giWorkplane3& plane, const giPoint2& size);

    /// The same with rounded corners: arcs and lines in turn, from the arc at the origin on. A side
    /// of twice the radius has no line. Empty where a side is shorter, or the radius below 0.
    static ngkCurvePtr3 make_filleted_rectangle(const giWorkplane3& plane, const giPoint2& size,
                                                double radius);

    /// The Bezier curve between two points with the tangents given, both in the direction of
    /// travel; of degree 3, or of degree 2 where one tangent is unset. A line where both are unset,
    /// and where the tangents are along the chord. The tolerance is read once in a process.
    ///
    /// Empty where the points coincide, and where tangents that are along the chord do not lead
    /// from start to end. With the start tangent unset, the end tangent is along the chord when it
    /// points from the end back to the start.
    static ngkCurvePtr3 make_bezier_curve(const giPoint3& start, const giPoint3& end,
                                          const giUnitVec3& start_tangent,
                                          const giUnitVec3& end_tangent);
    static ngkCurvePtr3 make_bezier_curve(const giPoint3& start, const giPoint3& end,
                                          const giUnitVec3& start_tangent,
                                          const giUnitVec3& end_tangent,
                                          nmkNGKBezierMagnitudeMethod method);

    /// The cubic whose derivatives at the ends have these lengths. Nothing is classified: only a
    /// curve that cannot be evaluated gives an empty handle.
    static ngkCurvePtr3 make_bezier_curve(const giPoint3& start, const giPoint3& end,
                                          const giUnitVec3& start_tangent,
                                          const giUnitVec3& end_tangent, double start_magnitude,
                                          double end_magnitude);

  private:
    nmkNgkMakeUtils() = delete;

    /// Sets `points` to the degree + 1 control points. Returns non-zero; 0 for a degree other than
    /// 2 with exactly one unset tangent and 3 with none.
    static int calculate_bezier_control_points(int degree, const giPoint3& start,
                                               const giPoint3& end, const giUnitVec3& start_tangent,
                                               const giUnitVec3& end_tangent,
                                               nmkNGKBezierMagnitudeMethod method,
                                               giPoint3coDynArr& points);

    /// Whether both tangents turn the same way about `centre`.
    static bool check_arc_tangents_compatible(const giPoint3& start, const giPoint3& end,
                                              const giPoint3& centre,
                                              const giUnitVec3& start_tangent,
                                              const giUnitVec3& end_tangent, double tolerance);

    /// Classifies a span: `invalid` where nothing sensible joins the ends, `straight` where a line
    /// does, neither (both 0) for a proper curve.
    static void curve_geometry_info(const giPoint3& start, const giPoint3& end,
                                    const giUnitVec3& start_tangent, const giUnitVec3& end_tangent,
                                    int& invalid, int& straight, double tolerance);

    /// The same for spans with an unset tangent; returns 0 where both are set.
    static int curve_geometry_info_invalid_tang(const giPoint3& start, const giPoint3& end,
                                                const giUnitVec3& start_tangent,
                                                const giUnitVec3& end_tangent, int& invalid,
                                                int& straight, double tolerance);
};
