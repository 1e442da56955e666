#include "travel_obstacles.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace nmk_ordering {

std::vector<PlanePoint> plane_corners(const std::vector<giPoint2>& part, double unit) {
    std::vector<PlanePoint> corners;
    corners.reserve(part.size());
    for (const giPoint2& p : part) corners.push_back(plane_point(p.x / unit, p.y / unit));
    return corners;
}

TravelObstacles::TravelObstacles(const std::vector<nmkTravelKeepOut>& keep_outs, double unit) {
    for (std::size_t i = 0; i < keep_outs.size(); ++i) {
        for (const std::vector<giPoint2>& part : keep_outs[i].parts) {
            m_polygons.emplace_back(plane_corners(part, unit));
            m_keep_outs.push_back(static_cast<int>(i));
        }
    }
    prepare();
}

TravelObstacles::TravelObstacles(std::vector<TravelPolygon> polygons)
    : m_polygons(std::move(polygons)), m_keep_outs(m_polygons.size()) {
    std::iota(m_keep_outs.begin(), m_keep_outs.end(), 0);
    prepare();
}

void TravelObstacles::prepare() {
    std::vector<PlaneBox> boxes;
    boxes.reserve(m_polygons.size());
    for (const TravelPolygon& polygon : m_polygons) boxes.push_back(polygon.box());
    m_tree = TravelBoxTree(boxes);
    count_near();
}

// The same roundings of both make a polygon that meets the box of a leg meet it in cells too.
std::int16_t TravelObstacles::cell(double value, double low, double high, double width) {
    if (value < low) return 0;
    if (value > high) return cells + 1;
    const double number = width > 0.0 ? std::floor((value - low) / width) : 0.0;
    return static_cast<std::int16_t>(std::clamp(number, 0.0, cells - 1.0) + 1.0);
}

void TravelObstacles::count_near() {
    m_counts.assign(static_cast<std::size_t>(sums) * sums, 0);
    if (m_polygons.empty()) return;
    m_box = m_polygons.front().box();
    for (const TravelPolygon& polygon : m_polygons) {
        const PlaneBox& box = polygon.box();
        m_box.low = {std::min(m_box.low.x, box.low.x), std::min(m_box.low.y, box.low.y)};
        m_box.high = {std::max(m_box.high.x, box.high.x), std::max(m_box.high.y, box.high.y)};
    }
    m_cell = {(m_box.high.x - m_box.low.x) / cells, (m_box.high.y - m_box.low.y) / cells};
    for (const TravelPolygon& polygon : m_polygons) add_near(polygon.box());
    for (int row = 1; row < sums; ++row) {
        for (int column = 1; column < sums; ++column) {
            const int before = count_at(column - 1, row) + count_at(column, row - 1) -
                               count_at(column - 1, row - 1);
            std::uint16_t& count = count_at(column, row);
            count = static_cast<std::uint16_t>(count + before);
        }
    }
}

void TravelObstacles::add_near(const PlaneBox& box) {
    const PlaneCell first = cell_of(box.low);
    const PlaneCell last = cell_of(box.high);
    for (int row = first.row; row <= last.row; ++row) {
        for (int i = first.column; i <= last.column; ++i) count_at(i + 1, row + 1) = 1;
    }
}

// Of the polygons near the line; the tree has them in no order.
template <class Holds>
std::optional<int> TravelObstacles::first_keep_out(const PlanePoint& a, const PlanePoint& b,
                                                   const Holds& holds) const {
    if (!is_any_near(a, b)) return std::nullopt;
    std::size_t first = m_polygons.size();
    m_tree.visit(a, b, [&](std::size_t i) {
        if (i < first && holds(i)) first = i;
        return false;
    });
    return first < m_polygons.size() ? std::optional(m_keep_outs[first]) : std::nullopt;
}

std::optional<int> TravelObstacles::keep_out_at(const PlanePoint& p) const {
    return first_keep_out(p, p, [&](std::size_t i) { return m_polygons[i].has_inside(p); });
}

std::optional<int> TravelObstacles::keep_out_between(const PlanePoint& a,
                                                     const PlanePoint& b) const {
    return first_keep_out(a, b, [&](std::size_t i) { return m_polygons[i].meets(a, b); });
}

bool TravelObstacles::is_any_between(const PlanePoint& a, const PlanePoint& b) const {
    bool is_met = false;
    m_tree.visit(a, b, [&](std::size_t i) { return is_met = m_polygons[i].meets(a, b); });
    return is_met;
}

PlanePoint TravelObstacles::perimeter() const {
    PlanePoint sum;
    for (const TravelPolygon& polygon : m_polygons) {
        for (int i = 0; i < polygon.size(); ++i) {
            sum.x += std::fabs(polygon.after(i).x - polygon.corner(i).x);
            sum.y += std::fabs(polygon.after(i).y - polygon.corner(i).y);
        }
    }
    return sum;
}

}  // namespace nmk_ordering
