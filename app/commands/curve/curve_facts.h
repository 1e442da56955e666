// curve_facts.h: what is known of a curve.
#pragma once

#include <geometry/giBox3.h>
#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>
#include <ngk/ngkCurve.h>

#include <optional>
#include <string_view>
#include <vector>

namespace nmk_curve {

enum class CurveKind {
    point,
    line,
    half_line,
    infinite_line,
    circle,
    arc,
    bezier,
    nurbs,
    polyline,
    composite,
    reversed,
    transformed,
    on_surface
};

/// "half line", and for programs "half_line".
std::string_view kind_name(CurveKind kind);
std::string_view kind_key(CurveKind kind);

/// Lengths are in mm. Points and directions are unset, and lists empty, where the kind has none.
struct CurveFacts {
    CurveKind kind = CurveKind::line;
    double length = 0.0;  // infinite for a line without an end
    giBox3 box;           // empty for a line without an end
    bool is_closed = false;
    int segments = 1;
    giPoint3 start, end;
    giUnitVec3 start_tangent, end_tangent;
    giPoint3 through;   // a point of an infinite line, whose direction is its start tangent
    giPoint3 centre;    // of a circle or arc, as the two below
    giUnitVec3 normal;  // about which it turns counter-clockwise
    std::optional<double> radius;
    std::optional<double> sweep;           // of an arc, in degrees
    std::optional<int> degree;             // of a Bezier or NURBS curve
    std::vector<giPoint3> control_points;  // or the points of a polyline
    std::vector<double> weights, knots;    // no weights: a polynomial curve
};

/// `curve` is valid. Ends are the same where they are at most `tolerance` apart.
CurveFacts curve_facts(const ngkCurvePtr3& curve, double tolerance);

}  // namespace nmk_curve
