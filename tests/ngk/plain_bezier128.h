// plain_bezier128: a Bezier curve by triangles of linear interpolations in 113 bits.
#pragma once

#include <ngk/ngkBezCurve.h>

#include <array>
#include <cmath>
#include <vector>

#include "exactmath/binary128.h"

namespace plain_bezier128 {

/// Three coordinates times the weight, and the weight.
using Weighted = std::array<Binary128, 4>;

using Coordinates = std::array<Binary128, 3>;

inline Weighted de_casteljau(std::vector<Weighted> points, double u) {
    for (std::size_t count = points.size(); count > 1; --count) {
        for (std::size_t i = 0; i + 1 < count; ++i) {
            for (std::size_t k = 0; k < 4; ++k)
                points[i][k] = points[i][k] * (1 - Binary128(u)) + points[i + 1][k] * Binary128(u);
        }
    }
    return points[0];
}

/// The control points of the derivative; of a single point a zero.
inline std::vector<Weighted> derivative(const std::vector<Weighted>& points) {
    std::vector<Weighted> differences(std::max<std::size_t>(points.size() - 1, 1), Weighted{});
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        for (std::size_t k = 0; k < 4; ++k)
            differences[i][k] =
                (points[i + 1][k] - points[i][k]) * static_cast<double>(points.size() - 1);
    }
    return differences;
}

struct Jet {
    Coordinates point;
    Coordinates first;
    Coordinates second;
};

inline Jet jet_at(const ngkBezCurve3& curve, double u) {
    std::vector<Weighted> points;
    for (int i = 0; i <= curve.degree(); ++i) {
        const giPoint3 at = curve.point(i);
        const Binary128 weight = curve.weight(i);
        points.push_back({at.x * weight, at.y * weight, at.z * weight, weight});
    }
    const std::vector<Weighted> differences = derivative(points);
    const Weighted a = de_casteljau(points, u);
    const Weighted b = de_casteljau(differences, u);
    const Weighted c = de_casteljau(derivative(differences), u);
    Jet jet;
    for (std::size_t k = 0; k < 3; ++k) {
        jet.point[k] = a[k] / a[3];
        jet.first[k] = (b[k] - jet.point[k] * b[3]) / a[3];
        jet.second[k] = (c[k] - 2 * jet.first[k] * b[3] - jet.point[k] * c[3]) / a[3];
    }
    return jet;
}

/// How far a point or vector with x, y and z is from what it should be.
inline double error_of(double x, double y, double z, const Coordinates& expected) {
    return std::hypot(static_cast<double>(x - expected[0]), static_cast<double>(y - expected[1]),
                      static_cast<double>(z - expected[2]));
}

inline double length_of(const Coordinates& v) { return error_of(0.0, 0.0, 0.0, v); }

}  // namespace plain_bezier128
