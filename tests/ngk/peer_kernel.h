// peer_kernel: curves of ours as those of another geometry kernel.
#pragma once

#if defined(NMK_WITH_PEER_KERNEL)

#include <ngk/ngkBezCurve.h>
#include <ngk/ngkNurbCurve.h>
#include <GCPnts_AbscissaPoint.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BezierCurve.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>

namespace peer_kernel {

inline gp_Pnt point_of(const giPoint3& point) { return gp_Pnt(point.x, point.y, point.z); }

template <class Curve>
TColgp_Array1OfPnt poles_of(const Curve& curve, int count) {
    TColgp_Array1OfPnt poles(1, count);
    for (int i = 0; i < count; ++i) poles.SetValue(i + 1, point_of(curve.point(i)));
    return poles;
}

template <class Curve>
TColStd_Array1OfReal weights_of(const Curve& curve, int count) {
    TColStd_Array1OfReal weights(1, count);
    for (int i = 0; i < count; ++i) weights.SetValue(i + 1, curve.weight(i));
    return weights;
}

inline Handle(Geom_Curve) curve_of(const ngkBezCurve3& curve) {
    const int count = curve.degree() + 1;
    return new Geom_BezierCurve(poles_of(curve, count), weights_of(curve, count));
}

/// Of a curve with clamped ends.
inline Handle(Geom_Curve) curve_of(const ngkNurbCurve3& curve) {
    std::vector<double> knots;
    std::vector<int> times;
    for (int i = 0; i < curve.knot_count(); ++i) {
        if (knots.empty() || knots.back() != curve.knot(i)) {
            knots.push_back(curve.knot(i));
            times.push_back(0);
        }
        ++times.back();
    }
    const int count = static_cast<int>(knots.size());
    TColStd_Array1OfReal values(1, count);
    TColStd_Array1OfInteger multiplicities(1, count);
    for (int i = 0; i < count; ++i) {
        values.SetValue(i + 1, knots[static_cast<std::size_t>(i)]);
        multiplicities.SetValue(i + 1, times[static_cast<std::size_t>(i)]);
    }
    return new Geom_BSplineCurve(poles_of(curve, curve.point_count()),
                                 weights_of(curve, curve.point_count()), values, multiplicities,
                                 curve.degree());
}

/// The parameter of the nearest point that the peer finds, which may be an end: those are not
/// projections.
inline double closest_parameter(const Handle(Geom_Curve) & curve, const gp_Pnt& query) {
    double nearest = curve->FirstParameter();
    const auto consider = [&](double parameter) {
        const bool is_nearer =
            query.Distance(curve->Value(parameter)) < query.Distance(curve->Value(nearest));
        if (is_nearer) nearest = parameter;
    };
    consider(curve->LastParameter());
    const GeomAPI_ProjectPointOnCurve projection(query, curve);
    if (projection.NbPoints() > 0) consider(projection.LowerDistanceParameter());
    return nearest;
}

inline double length(const Handle(Geom_Curve) & curve, double tolerance) {
    const GeomAdaptor_Curve adaptor(curve);
    return GCPnts_AbscissaPoint::Length(adaptor, tolerance);
}

}  // namespace peer_kernel

#endif
