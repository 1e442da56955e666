// sample_curves: curves of every kind in space and in the plane, for tests that hold for all.
#pragma once

#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkCurveOnSurf3.h>
#include <ngk/ngkElementarySurfs.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkNurbSurf.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>

#include <ostream>
#include <random>
#include <span>
#include <vector>

namespace sample_curves {

template <int Dimension>
struct Named {
    const char* name;
    typename ngkCurve<Dimension>::Ptr curve;

    friend std::ostream& operator<<(std::ostream& stream, const Named& one) {
        return stream << one.name;
    }
};

inline giPoint3 point(double x, double y, double z, giPoint3) { return {x, y, z}; }
inline giPoint2 point(double x, double y, double, giPoint2) { return {x, y}; }

/// `count` points in the cube or square from -2 to 2.
template <int Dimension>
auto random_points(int count, unsigned seed) {
    using Point = typename ngkSpace<Dimension>::Point;
    std::mt19937 random(seed);
    const auto coordinate = [&] { return static_cast<double>(random()) / 1073741824.0 - 2.0; };
    std::vector<Point> points;
    for (int i = 0; i < count; ++i) {
        const double x = coordinate();
        const double y = coordinate();
        points.push_back(point(x, y, coordinate(), Point()));
    }
    return points;
}

/// Knots that repeat the ends `degree` + 1 times and are one apart inside.
inline std::vector<double> clamped_knots(int degree, int points) {
    std::vector<double> knots;
    for (int i = 0; i < points + degree + 1; ++i)
        knots.push_back(std::clamp(i - degree, 0, points - degree));
    return knots;
}

inline std::vector<double> some_weights(std::size_t count) {
    std::vector<double> weights;
    for (std::size_t i = 0; i < count; ++i) weights.push_back(1.0 + 0.5 * double(i % 4));
    return weights;
}

inline giWorkplane3 slanted() {
    return {giPoint3(0.3, -0.2, 0.5), giUnitVec3(1, 2, -1), giUnitVec3(2, -1, 3)};
}

template <int Dimension>
ngkCircle<Dimension> circle();
template <>
inline ngkCircle<3> circle<3>() {
    return {slanted(), 1.5};
}
template <>
inline ngkCircle<2> circle<2>() {
    return {giPoint2(0.3, -0.2), 1.5};
}

inline giXform3 stretch(giXform3) {
    return giXform3::translation(giVector3(1, 2, 3)) * giXform3(giXform3Scale, 2.0, -1.0, 0.5) *
           giXform3::rotation(giPoint3(0, 0, 0), giUnitVec3(1, 1, 1), giAngle(giRadians, 0.7));
}
inline giXform2 stretch(giXform2) { return {{{{1.5, 0.5}, {-0.25, 2.0}}}, giVector2(1, -2)}; }

template <int Dimension>
class Maker {
  public:
    using Curve = ngkCurve<Dimension>;
    using Ptr = typename Curve::Ptr;
    using Point = typename Curve::Point;

    std::vector<Named<Dimension>> make() {
        add("line", new ngkLine<Dimension>(points(2, 1)[0], points(2, 1)[1]));
        add("circle", new ngkCircle<Dimension>(circle<Dimension>()));
        add("arc", new ngkArc<Dimension>(circle<Dimension>(), 0.5, 2.0));
        add("arc_across_the_seam", new ngkArc<Dimension>(circle<Dimension>(), 5.0, 8.0));
        add("parabola", bezier(3, 2));
        add("cubic", bezier(4, 3));
        add("degree_11", bezier(12, 4));
        add("rational_cubic", new ngkBezCurve<Dimension>(points(4, 5), some_weights(4)));
        add("nurbs", nurbs(3, 20, 6, false));
        add("rational_nurbs", nurbs(3, 20, 7, true));
        add("nurbs_of_degree_1", nurbs(1, 6, 8, false));
        add("nurbs_without_clamped_ends", unclamped());
        add("polyline", new ngkPolyline<Dimension>(points(9, 10)));
        add("composite", composite());
        add("reversed_nurbs", new ngkReverseCurve<Dimension>(Ptr(nurbs(3, 9, 11, true))));
        add("reversed_composite", new ngkReverseCurve<Dimension>(Ptr(composite())));
        add("ellipse", transformed(new ngkCircle<Dimension>(circle<Dimension>())));
        add("transformed_composite", transformed(composite()));
        add("transformed_reversed_nurbs",
            transformed(new ngkReverseCurve<Dimension>(Ptr(nurbs(4, 9, 12, true)))));
        add("reversed_transformed_arc",
            new ngkReverseCurve<Dimension>(
                Ptr(transformed(new ngkArc<Dimension>(circle<Dimension>(), 1.0, 4.0)))));
        return m_curves;
    }

    static Curve* nurbs(int degree, int count, unsigned seed, bool rational) {
        return new ngkNurbCurve<Dimension>(
            degree, clamped_knots(degree, count), points(count, seed),
            rational ? some_weights(static_cast<std::size_t>(count)) : std::vector<double>());
    }

    static Curve* composite() {
        auto* path = new ngkCompCurve<Dimension>(1e-5);
        const std::vector<Point> at = points(8, 13);
        path->add_segment_end(Ptr(new ngkLine<Dimension>(at[0], at[1])));
        path->add_segment_end(Ptr(new ngkBezCurve<Dimension>(std::span(at).subspan(1, 4))));
        path->add_segment_end(Ptr(new ngkPolyline<Dimension>(std::span(at).subspan(4, 3))));
        return path;
    }

  private:
    static std::vector<Point> points(int count, unsigned seed) {
        return random_points<Dimension>(count, seed);
    }

    static Curve* bezier(int count, unsigned seed) {
        return new ngkBezCurve<Dimension>(points(count, seed));
    }

    static Curve* unclamped() {
        std::vector<double> knots;
        for (int i = 0; i < 12; ++i) knots.push_back(0.5 * i);
        return new ngkNurbCurve<Dimension>(3, knots, points(8, 9));
    }

    static Curve* transformed(Curve* curve) {
        using Xform = typename ngkSpace<Dimension>::Xform;
        return new ngkTransformedCurve<Dimension>(Ptr(curve), stretch(Xform()));
    }

    void add(const char* name, Curve* curve) { m_curves.push_back({name, Ptr(curve)}); }

    std::vector<Named<Dimension>> m_curves;
};

inline ngkSurfPtr nurbs_surface(bool rational, int degree = 3) {
    const int along_u = 5;
    const int along_v = 6;
    std::vector<giPoint3> points;
    const std::vector<giPoint3> heights = random_points<3>(along_u * along_v, 21);
    for (int i = 0; i < along_u; ++i) {
        for (int j = 0; j < along_v; ++j) points.emplace_back(i, j, heights[points.size()].z);
    }
    const std::vector<double> weights = some_weights(points.size());
    return ngkSurfPtr(new ngkNurbSurf({degree, clamped_knots(degree, along_u)},
                                      {degree, clamped_knots(degree, along_v)}, points,
                                      rational ? std::span(weights) : std::span<const double>()));
}

inline ngkCurvePtr2 plane_curve() {
    const std::vector<giPoint2> points = {{0.1, 0.1}, {0.9, 0.2}, {0.1, 0.9}, {0.8, 0.7}};
    return ngkCurvePtr2(new ngkBezCurve2(points));
}

inline std::vector<Named<3>> on_surfaces() {
    const auto on = [](const ngkSurfPtr& surface) {
        return ngkCurvePtr3(new ngkCurveOnSurf3(plane_curve(), surface));
    };
    const std::array<giPoint3, 4> corners = {giPoint3(0, 0, 0), giPoint3(3, 0, 1),
                                             giPoint3(0, 2, -1), giPoint3(3, 3, 2)};
    return {{"on_a_plane", on(ngkSurfPtr(new ngkPlaneSurf(slanted())))},
            {"on_a_cylinder", on(ngkSurfPtr(new ngkCylinderSurf(slanted(), 1.5)))},
            {"on_a_sphere", on(ngkSurfPtr(new ngkSphereSurf(slanted(), 1.5)))},
            {"on_a_bilinear_surface", on(ngkSurfPtr(new ngkBilinearSurf(corners)))},
            {"on_a_nurbs_surface", on(nurbs_surface(false))},
            {"on_a_rational_nurbs_surface", on(nurbs_surface(true))},
            {"on_a_surface_with_creases", on(nurbs_surface(false, 1))},
            {"transformed_on_a_sphere",
             ngkCurvePtr3(new ngkTransformedCurve3(
                 on(ngkSurfPtr(new ngkSphereSurf(slanted(), 1.5))), stretch(giXform3())))},
            {"circle_on_a_cylinder",
             ngkCurvePtr3(new ngkCurveOnSurf3(ngkCurvePtr2(new ngkCircle2(circle<2>())),
                                              ngkSurfPtr(new ngkCylinderSurf(slanted(), 2.0))))},
            {"polyline_on_a_sphere",
             ngkCurvePtr3(new ngkCurveOnSurf3(
                 ngkCurvePtr2(new ngkPolyline2(std::vector<giPoint2>{{0, 0}, {1, 1}, {2, -1}})),
                 ngkSurfPtr(new ngkSphereSurf(slanted(), 1.0))))}};
}

inline std::vector<Named<3>> in_space() {
    std::vector<Named<3>> curves = Maker<3>().make();
    for (const Named<3>& one : on_surfaces()) curves.push_back(one);
    return curves;
}

inline std::vector<Named<2>> in_the_plane() { return Maker<2>().make(); }

}  // namespace sample_curves
