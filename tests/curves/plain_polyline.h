// plain_polyline.h: lengths along a polyline the plain way, from the start for each of them.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>

#include <cmath>
#include <vector>

namespace plain_polyline {

using Points = std::vector<giPoint3>;

inline double length_to(const Points& points, int index) {
    double sum = 0.0;
    for (int i = 0; i < index; ++i)
        sum +=
            points[static_cast<std::size_t>(i)].distance(points[static_cast<std::size_t>(i) + 1]);
    return sum;
}

/// Where a walk ends, or that it has run out of segments.
struct Walk {
    int k = 0;
    double walked = 0.0;
    bool has_run_out = false;
};

inline Walk walk_to(const Points& points, double target, double tolerance) {
    Walk walk;
    const int last = static_cast<int>(points.size()) - 1;
    while (walk.walked < target) {
        if (walk.k == last) {
            walk.has_run_out = true;
            break;
        }
        const auto k = static_cast<std::size_t>(walk.k);
        const giLength length = points[k + 1].distance(points[k]);
        const giVector3 across = points[k + 1] - points[k];
        const double rest = target - walk.walked - tolerance;
        if (rest < 0.0) break;
        if (rest * rest <= across.dot(across)) break;
        walk.walked += length;
        ++walk.k;
    }
    return walk;
}

/// The point at that length; unset where there is none.
inline giPoint3 point_at(const Points& points, double target, double tolerance) {
    const Walk walk = walk_to(points, target, tolerance);
    if (walk.has_run_out) return giPoint3();
    const auto k = static_cast<std::size_t>(walk.k);
    const double rest = target - walk.walked;
    if (rest < tolerance) return points[k];
    if (k + 1 == points.size()) return giPoint3();
    const double length = points[k].distance(points[k + 1]);
    if (std::abs(rest - length) < tolerance) return points[k + 1];
    if (!(rest < length)) return giPoint3();
    return points[k] + (points[k + 1] - points[k]) * (rest / length);
}

inline Points equally_spaced(const Points& points, int count, double tolerance) {
    Points found;
    if (count <= 1 || points.empty()) return found;
    const double spacing = length_to(points, static_cast<int>(points.size()) - 1) / (count - 1);
    for (int i = 0; i < count; ++i) {
        const giPoint3 point = i == 0           ? points.front()
                               : i == count - 1 ? points.back()
                                                : point_at(points, i * spacing, tolerance);
        if (!point.is_set()) break;
        found.push_back(point);
    }
    return found;
}

}  // namespace plain_polyline
