// plain_point_spacing.h: the plain way to measure how far points are apart: every pair.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "draw/svg_document.h"

namespace plain_point_spacing {

/// The median of the distances from each point to the nearest one that differs from it.
inline double of(const std::vector<nmk_draw::SvgPoint>& points) {
    constexpr double far = std::numeric_limits<double>::infinity();
    std::vector<double> nearest;
    for (const nmk_draw::SvgPoint& a : points) {
        double least = far;
        for (const nmk_draw::SvgPoint& b : points) {
            const double distance = std::hypot(a.x - b.x, a.y - b.y);
            if (distance > 0.0) least = std::min(least, distance);
        }
        if (least < far) nearest.push_back(least);
    }
    if (nearest.empty()) return far;
    std::sort(nearest.begin(), nearest.end());
    return nearest[nearest.size() / 2];
}

}  // namespace plain_point_spacing
