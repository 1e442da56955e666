// curve_facts: what is known of a curve.

#include "commands/curve/curve_facts.h"

#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCircle.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkCurveOnSurf3.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>

#include <array>
#include <numbers>
#include <utility>

namespace nmk_curve {

namespace {

struct KindNames {
    std::string_view name, key;
};

// In the order of CurveKind.
constexpr std::array<KindNames, 13> kind_names = {{{"point", "point"},
                                                   {"line", "line"},
                                                   {"half line", "half_line"},
                                                   {"infinite line", "infinite_line"},
                                                   {"circle", "circle"},
                                                   {"arc", "arc"},
                                                   {"Bezier curve", "bezier"},
                                                   {"NURBS curve", "nurbs"},
                                                   {"polyline", "polyline"},
                                                   {"composite curve", "composite"},
                                                   {"reversed curve", "reversed"},
                                                   {"transformed curve", "transformed"},
                                                   {"curve on a surface", "on_surface"}}};

void add_kind(CurveFacts& facts, const ngkLine3& line) {
    facts.kind = line.kind() == ngkLineKind::bounded ? CurveKind::line
                 : line.kind() == ngkLineKind::half  ? CurveKind::half_line
                                                     : CurveKind::infinite_line;
    if (facts.kind == CurveKind::infinite_line) {
        facts.through = line.start();
        facts.start_tangent = giUnitVec3(line.direction());
    }
}

void add_kind(CurveFacts& facts, const ngkCircle3& circle) {
    facts.kind = CurveKind::circle;
    facts.centre = circle.centre();
    facts.normal = circle.plane().z_axis();
    facts.radius = circle.radius();
}

void add_kind(CurveFacts& facts, const ngkArc3& arc) {
    add_kind(facts, arc.circle());
    facts.kind = CurveKind::arc;
    facts.sweep = (arc.angles().high - arc.angles().low) * 180.0 / std::numbers::pi;
}

/// Control points and weights.
template <class Curve>
void add_poles(CurveFacts& facts, const Curve& curve, int count) {
    facts.degree = curve.degree();
    for (int i = 0; i < count; ++i) facts.control_points.push_back(curve.point(i));
    for (int i = 0; curve.is_rational() && i < count; ++i) {
        facts.weights.push_back(curve.weight(i));
    }
}

void add_kind(CurveFacts& facts, const ngkBezCurve3& curve) {
    facts.kind = CurveKind::bezier;
    if (curve.degree() == 1 && curve.point(0) == curve.point(1)) {
        facts.kind = CurveKind::point;
        return;
    }
    add_poles(facts, curve, curve.degree() + 1);
}

void add_kind(CurveFacts& facts, const ngkNurbCurve3& curve) {
    facts.kind = CurveKind::nurbs;
    add_poles(facts, curve, curve.point_count());
    for (int i = 0; i < curve.knot_count(); ++i) facts.knots.push_back(curve.knot(i));
}

void add_kind(CurveFacts& facts, const ngkPolyline3& polyline) {
    facts.kind = CurveKind::polyline;
    facts.control_points.assign(polyline.points().begin(), polyline.points().end());
}

void add_kind(CurveFacts& facts, const ngkCompCurve3&) { facts.kind = CurveKind::composite; }
void add_kind(CurveFacts& facts, const ngkReverseCurve3&) { facts.kind = CurveKind::reversed; }
void add_kind(CurveFacts& facts, const ngkCurveOnSurf3&) { facts.kind = CurveKind::on_surface; }
void add_kind(CurveFacts& facts, const ngkTransformedCurve3&) {
    facts.kind = CurveKind::transformed;
}

template <class... Kinds>
void add_first_kind(CurveFacts& facts, const ngkCurve3& curve) {
    const auto add = [&](const auto* const kind) {
        if (kind != nullptr) add_kind(facts, *kind);
        return kind != nullptr;
    };
    (add(dynamic_cast<const Kinds*>(&curve)) || ...);
}

/// The end at this fraction and the direction of travel there.
void add_end(const ngkCurve3& curve, double fraction, giPoint3& end, giUnitVec3& tangent) {
    const ngkT t = curve.t_at(fraction);
    giVector3 direction;
    if (curve.evaluate(t, end) && curve.tangent(t, direction)) tangent = giUnitVec3(direction);
}

}  // namespace

std::string_view kind_name(CurveKind kind) {
    return kind_names[static_cast<std::size_t>(kind)].name;
}

std::string_view kind_key(CurveKind kind) { return kind_names[static_cast<std::size_t>(kind)].key; }

CurveFacts curve_facts(const ngkCurvePtr3& curve, double tolerance) {
    CurveFacts facts;
    facts.length = curve->length();
    facts.box = curve->bounding_box();
    facts.is_closed = curve->is_closed(tolerance) && facts.length > 0.0;
    facts.segments = curve->segment_count();
    add_end(*curve, 0.0, facts.start, facts.start_tangent);
    add_end(*curve, 1.0, facts.end, facts.end_tangent);
    add_first_kind<ngkLine3, ngkCircle3, ngkArc3, ngkBezCurve3, ngkNurbCurve3, ngkPolyline3,
                   ngkCompCurve3, ngkReverseCurve3, ngkTransformedCurve3, ngkCurveOnSurf3>(facts,
                                                                                           *curve);
    return facts;
}

}  // namespace nmk_curve
