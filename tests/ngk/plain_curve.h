// plain_curve: what the kernel computes, the plain way: triangles of linear interpolations, sums
// over many small steps, and looking at many points.
#pragma once

#include <ngk/ngkCurve.h>

#include <span>
#include <vector>

namespace plain_curve {

using nmk_ngk::Vec;

template <int Dimension>
Vec<Dimension> at(const ngkCurve<Dimension>& curve, double fraction) {
    typename ngkSpace<Dimension>::Point point;
    curve.evaluate(fraction, point);
    return nmk_ngk::vec_of(point);
}

/// de Casteljau.
template <class Value>
Value bezier(std::vector<Value> points, double u) {
    for (std::size_t count = points.size(); count > 1; --count) {
        for (std::size_t i = 0; i + 1 < count; ++i)
            points[i] = points[i] * (1.0 - u) + points[i + 1] * u;
    }
    return points[0];
}

/// de Boor.
template <class Value>
Value nurbs(int degree, std::span<const double> knots, std::span<const Value> points, double u) {
    const std::size_t p = static_cast<std::size_t>(degree);
    std::size_t k = p;
    while (k + 1 < points.size() && knots[k + 1] <= u) ++k;
    std::vector<Value> row(points.begin() + static_cast<std::ptrdiff_t>(k - p),
                           points.begin() + static_cast<std::ptrdiff_t>(k + 1));
    for (std::size_t level = 1; level <= p; ++level) {
        for (std::size_t j = p; j >= level; --j) {
            const double low = knots[k - p + j];
            const double high = knots[k + 1 + j - level];
            const double part = (u - low) / (high - low);
            row[j] = row[j - 1] * (1.0 - part) + row[j] * part;
        }
    }
    return row[p];
}

template <int Dimension>
std::vector<Vec<Dimension>> samples(const ngkCurve<Dimension>& curve, int count) {
    std::vector<Vec<Dimension>> points;
    for (int i = 0; i <= count; ++i) points.push_back(at(curve, double(i) / count));
    return points;
}

template <int Dimension>
double least_distance(std::span<const Vec<Dimension>> points, const Vec<Dimension>& query) {
    double least = (points[0] - query).square();
    for (const auto& point : points) least = std::min(least, (point - query).square());
    return std::sqrt(least);
}

template <int Dimension>
double length(std::span<const Vec<Dimension>> points) {
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) sum += (points[i] - points[i - 1]).norm();
    return sum;
}

template <int Dimension>
double distance_to_line(const Vec<Dimension>& query, const Vec<Dimension>& a,
                        const Vec<Dimension>& b) {
    const Vec<Dimension> along = b - a;
    const double square = along.square();
    const double part = square > 0.0 ? std::clamp((query - a).dot(along) / square, 0.0, 1.0) : 0.0;
    return (query - (a + along * part)).norm();
}

}  // namespace plain_curve
