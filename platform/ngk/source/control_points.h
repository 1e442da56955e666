// control_points: what control points and weights have to be, whatever they are the points of.
#pragma once

#include <ngk/Vec.h>

#include <algorithm>
#include <span>
#include <vector>

namespace nmk_ngk {

// Weights beyond these leave no digits of the points with small ones, or of the parameter. No unit.
inline constexpr double least_weight = 1e-10;
inline constexpr double greatest_weight = 1e10;

inline bool are_weights(std::span<const double> weights) {
    return std::ranges::all_of(weights,
                               [](double w) { return w >= least_weight && w <= greatest_weight; });
}

template <int Dimension>
bool are_points(std::span<const Vec<Dimension>> points) {
    return std::ranges::all_of(points, [](const auto& point) { return point.is_usable(); });
}

template <class Point>
auto vecs_of(std::span<const Point> points) {
    std::vector<decltype(vec_of(points[0]))> vecs;
    vecs.reserve(points.size());
    for (const Point& point : points) vecs.push_back(vec_of(point));
    return vecs;
}

template <class V>
auto points_of(std::span<const V> vecs) {
    std::vector<decltype(point_of(vecs[0]))> points;
    points.reserve(vecs.size());
    for (const V& v : vecs) points.push_back(point_of(v));
    return points;
}

}  // namespace nmk_ngk
