// bezier: points and derivatives of polynomial and rational Bezier curves.
//
// Control points are Euclidean, also of rational curves. No weights means a polynomial curve.
#pragma once

#include "bernstein.h"

namespace nmk_ngk {

template <int Dimension>
struct BezierView {
    std::span<const Vec<Dimension>> points;
    std::span<const double> weights;

    int degree() const noexcept { return static_cast<int>(points.size()) - 1; }
    bool is_rational() const noexcept { return !weights.empty(); }
    const Vec<Dimension>& point(int i) const noexcept {
        return points[static_cast<std::size_t>(i)];
    }
    double weight(int i) const noexcept { return weights[static_cast<std::size_t>(i)]; }
};

/// n times the value at u of the differences of neighbouring coefficients.
template <class Coefficient>
auto bernstein_slope(int degree, double u, const Coefficient& coefficient) {
    return bernstein_value(degree - 1, u,
                           [&](int i) { return coefficient(i + 1) - coefficient(i); }) *
           static_cast<double>(degree);
}

/// The second derivative; zero of a straight line.
template <class Coefficient>
auto bernstein_bend(int degree, double u, const Coefficient& coefficient) {
    if (degree < 2) return coefficient(0) * 0.0;
    return bernstein_value(degree - 2, u,
                           [&](int i) {
                               return (coefficient(i + 2) - coefficient(i + 1)) -
                                      (coefficient(i + 1) - coefficient(i));
                           }) *
           static_cast<double>(degree * (degree - 1));
}

template <int Dimension>
Vec<Dimension> bezier_point(const BezierView<Dimension>& curve, double u) {
    if (!curve.is_rational())
        return bernstein_value(curve.degree(), u, [&](int i) { return curve.point(i); });
    if (u == 0.0) return curve.points.front();
    if (u == 1.0) return curve.points.back();
    const auto weighted = [&](int i) { return curve.point(i) * curve.weight(i); };
    const double weight =
        bernstein_value(curve.degree(), u, [&](int i) { return curve.weight(i); });
    return bernstein_value(curve.degree(), u, weighted) * (1.0 / weight);
}

/// Formula: the quotient rule, about a point of the curve, so that what cancels is small.
template <int Dimension>
Jet<Dimension> rational_jet(const BezierView<Dimension>& curve, double u) {
    const int degree = curve.degree();
    const Vec<Dimension> point = bezier_point(curve, u);
    const auto weight = [&](int i) { return curve.weight(i); };
    const auto relative = [&](int i) { return (curve.point(i) - point) * curve.weight(i); };
    const double factor = 1.0 / bernstein_value(degree, u, weight);
    const double weight_slope = bernstein_slope(degree, u, weight);
    const Vec<Dimension> first = bernstein_slope(degree, u, relative) * factor;
    const Vec<Dimension> second =
        (bernstein_bend(degree, u, relative) - first * (2.0 * weight_slope)) * factor;
    return {point, first, second};
}

template <int Dimension>
Jet<Dimension> bezier_jet(const BezierView<Dimension>& curve, double u) {
    if (curve.is_rational()) return rational_jet(curve, u);
    const auto point = [&](int i) { return curve.point(i); };
    return {bernstein_value(curve.degree(), u, point), bernstein_slope(curve.degree(), u, point),
            bernstein_bend(curve.degree(), u, point)};
}

/// Control points of a curve or a part of it, in a fixed place.
template <int Dimension>
struct BezierPoints {
    int count;
    bool is_rational;
    std::array<Vec<Dimension>, max_points> points;
    std::array<double, max_points> weights;

    BezierView<Dimension> view() const noexcept {
        const std::size_t size = static_cast<std::size_t>(count);
        return {{points.data(), size}, {weights.data(), is_rational ? size : 0}};
    }
};

/// The parts below and above u. They share the point there. `high` may hold the curve itself.
template <int Dimension>
void split_bezier(const BezierView<Dimension>& curve, double u, BezierPoints<Dimension>& low,
                  BezierPoints<Dimension>& high) {
    const int count = curve.degree() + 1;
    const std::size_t last = curve.points.size() - 1;
    low.count = high.count = count;
    low.is_rational = high.is_rational = curve.is_rational();
    if (!curve.is_rational())
        return subdivide(curve.points.data(), count, u, low.points.data(), high.points.data());
    const Vec<Dimension> start = curve.points.front();
    const Vec<Dimension> end = curve.points.back();
    for (std::size_t i = 0; i <= last; ++i) high.points[i] = curve.points[i] * curve.weights[i];
    subdivide(high.points.data(), count, u, low.points.data(), high.points.data());
    subdivide(curve.weights.data(), count, u, low.weights.data(), high.weights.data());
    for (std::size_t i = 0; i <= last; ++i) {
        low.points[i] *= 1.0 / low.weights[i];
        high.points[i] *= 1.0 / high.weights[i];
    }
    low.points[0] = start;
    high.points[last] = end;
    high.points[0] = low.points[last];
}

}  // namespace nmk_ngk
