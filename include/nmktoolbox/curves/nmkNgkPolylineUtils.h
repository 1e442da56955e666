// nmkNgkPolylineUtils: lengths along polylines and curves, and points at given lengths.
//
// A curve is measured along a polygon that follows it within a tolerance, a length in the unit of
// the coordinates. A result within ngk_TOLCOINCPOINT3D of a vertex is exactly that vertex. Nothing
// is thrown or printed: failures show as unset points and short arrays.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <geometry/giUnitVec3.h>
#include <ncamcontainer/builtin_containers.h>
#include <ngk/ngkCurve.h>
#include <ngk/ngkPolyline.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkNgkPolylineUtils {
  public:
    /// The point at that length from the start, and the direction of the segment that it is on; at
    /// a vertex the segment that ends there. A distance of 0 or less gives the first point and the
    /// first direction.
    ///
    /// Where the distance is beyond the end by the tolerance or more, and for fewer than two
    /// points, x of both is set to minus the largest double and the rest is left as it is.
    static void evaluate_polyline(const ngkPolyline3& polyline, double distance, giPoint3& point,
                                  giUnitVec3& tangent);

    /// Points at equal lengths along a polyline, both ends exactly included, and their parameters.
    ///
    ///   parameters       one for each point of the polyline; with another number of them, and so
    ///                    with none, `out_parameters` stays empty
    ///   count            number of points; none are given for 1 or less
    ///   points           receives them; fewer where the polyline has unset points or none
    ///   out_parameters   receives the parameters, interpolated as the points are
    static void evaluate_equally_spaced_points(const ngkPolyline3& polyline,
                                               const doublecoDynArr& parameters, int count,
                                               giPoint3coPageArr& points,
                                               doublecoPageArr& out_parameters);

    /// The same without parameters.
    static void evaluate_equally_spaced_points(const ngkPolyline3& polyline, int count,
                                               giPoint3coPageArr& points,
                                               doublecoPageArr& out_parameters);

    /// The same along a curve's polygon; the parameters are fractions of the curve's range. Equal
    /// lengths are those of the polygon, and the points lie on it.
    static void evaluate_equally_spaced_points(ngkCurvePtr3 curve, int count, double tolerance,
                                               giPoint3coPageArr& points,
                                               doublecoPageArr& out_parameters);

    /// The length from the first point to the point `index`; 0.0 where there is no such point.
    static double polyline_length_to_index(const ngkPolyline3& polyline, int index);

    /// The length of the curve's polygon; 0.0 for an empty handle and an invalid curve.
    static double get_arc_length(const ngkCurvePtr3& curve, double tolerance);

    /// The point of the curve at that length from its start or, where `forward` is 0, from its end.
    ///
    ///   point      receives the point of the curve that is nearest to the one on its polygon
    ///   parameter  receives its parameter, on the given curve also where `forward` is 0
    ///
    /// Beyond the end, and for a curve that cannot be measured, the point is unset and the segment
    /// of the parameter -1. For many points of one curve see nmkNgkArcLengthPositions.
    static void get_arc_length_position(const ngkCurvePtr3& curve, int forward, double distance,
                                        double tolerance, giPoint3& point, ngkT& parameter);

  private:
    friend class nmkNgkArcLengthPositions;

    nmkNgkPolylineUtils() = delete;

    /// The point of the curve that is nearest to `point`, and of equally near ones that at the
    /// fraction of the curve's range where it is expected.
    static ngkCurvePoint3 get_curve_point(const ngkCurvePtr3& curve, const giPoint3& point,
                                          double expected_fraction);
};
