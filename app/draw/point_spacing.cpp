// point_spacing: how far the points of a drawing are apart.
//
// The points are sorted along a curve that visits the quarters of a square one after the other, and
// their quarters likewise (Morton, A computer oriented geodetic data base, 1966). Neighbours in the
// plane are mostly near each other on it, so a few neighbours on the curve replace a search.

#include "draw/point_spacing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace nmk_draw {

namespace {

constexpr std::size_t neighbours = 8;  // on either side, along the curve
constexpr double finest = 65535.0;     // steps in x and in y

/// The lower 16 bits, with a zero between each two.
std::uint32_t spread_bits(std::uint32_t bits) {
    bits = (bits | (bits << 8U)) & 0x00FF00FFU;
    bits = (bits | (bits << 4U)) & 0x0F0F0F0FU;
    bits = (bits | (bits << 2U)) & 0x33333333U;
    return (bits | (bits << 1U)) & 0x55555555U;
}

struct PlacedPoint {
    std::uint32_t place;  // on the curve
    SvgPoint point;
};

std::vector<PlacedPoint> along_curve(const std::vector<SvgPoint>& points) {
    const auto by_x = [](const SvgPoint& a, const SvgPoint& b) { return a.x < b.x; };
    const auto by_y = [](const SvgPoint& a, const SvgPoint& b) { return a.y < b.y; };
    const auto [left, right] = std::minmax_element(points.begin(), points.end(), by_x);
    const auto [top, bottom] = std::minmax_element(points.begin(), points.end(), by_y);
    const double side = std::max({right->x - left->x, bottom->y - top->y, 1e-12});
    const auto step = [side](double from, double value) {
        return spread_bits(static_cast<std::uint32_t>((value - from) / side * finest));
    };
    std::vector<PlacedPoint> placed;
    placed.reserve(points.size());
    for (const SvgPoint& point : points) {
        placed.push_back({step(left->x, point.x) | step(top->y, point.y) << 1U, point});
    }
    std::sort(placed.begin(), placed.end(),
              [](const PlacedPoint& a, const PlacedPoint& b) { return a.place < b.place; });
    return placed;
}

}  // namespace

double point_spacing(const std::vector<SvgPoint>& points) {
    constexpr double far = std::numeric_limits<double>::infinity();
    if (points.size() < 2) {
        return far;
    }
    const std::vector<PlacedPoint> placed = along_curve(points);
    std::vector<double> distances(placed.size(), far);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        for (std::size_t j = i + 1; j < std::min(i + 1 + neighbours, placed.size()); ++j) {
            const double dx = placed[j].point.x - placed[i].point.x;
            const double dy = placed[j].point.y - placed[i].point.y;
            const double distance = std::sqrt(dx * dx + dy * dy);
            if (distance > 0.0) {
                distances[i] = std::min(distances[i], distance);
                distances[j] = std::min(distances[j], distance);
            }
        }
    }
    std::erase(distances, far);
    if (distances.empty()) {
        return far;
    }
    const auto middle = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / 2);
    std::nth_element(distances.begin(), middle, distances.end());
    return *middle;
}

}  // namespace nmk_draw
