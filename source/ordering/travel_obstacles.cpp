#include "travel_obstacles.h"

#include <algorithm>
#include <cmath>

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
    count_near();
}

// The same roundings of both make a polygon that meets the box of a leg meet it in cells too.
int TravelObstacles::cell(double value, double low, double width) {
    const double number = width > 0.0 ? std::floor((value - low) / width) : 0.0;
    return static_cast<int>(std::clamp(number, 0.0, cells - 1.0));
}

void TravelObstacles::count_near() {
    if (m_polygons.empty()) return;
    m_box = m_polygons.front().box();
    for (const TravelPolygon& polygon : m_polygons) {
        const PlaneBox& box = polygon.box();
        m_box.low = {std::min(m_box.low.x, box.low.x), std::min(m_box.low.y, box.low.y)};
        m_box.high = {std::max(m_box.high.x, box.high.x), std::max(m_box.high.y, box.high.y)};
    }
    m_cell = {(m_box.high.x - m_box.low.x) / cells, (m_box.high.y - m_box.low.y) / cells};
    m_counts.assign((cells + 1) * (cells + 1), 0);
    for (const TravelPolygon& polygon : m_polygons) {
        const PlaneBox& box = polygon.box();
        const int last_column = cell(box.high.x, m_box.low.x, m_cell.x);
        const int last_row = cell(box.high.y, m_box.low.y, m_cell.y);
        for (int row = cell(box.low.y, m_box.low.y, m_cell.y); row <= last_row; ++row) {
            const int first_column = cell(box.low.x, m_box.low.x, m_cell.x);
            for (int i = first_column; i <= last_column; ++i) count_at(i + 1, row + 1) = 1;
        }
    }
    for (int row = 1; row <= cells; ++row) {
        for (int column = 1; column <= cells; ++column) {
            count_at(column, row) += count_at(column - 1, row) + count_at(column, row - 1) -
                                     count_at(column - 1, row - 1);
        }
    }
}

bool TravelObstacles::is_any_near(const PlanePoint& a, const PlanePoint& b) const {
    const PlaneBox box = box_of(a, b);
    if (m_polygons.empty() || box.is_apart(m_box)) return false;
    const int left = cell(box.low.x, m_box.low.x, m_cell.x);
    const int right = cell(box.high.x, m_box.low.x, m_cell.x) + 1;
    const int lower = cell(box.low.y, m_box.low.y, m_cell.y);
    const int upper = cell(box.high.y, m_box.low.y, m_cell.y) + 1;
    return count_at(right, upper) - count_at(left, upper) - count_at(right, lower) +
               count_at(left, lower) >
           0;
}

std::optional<int> TravelObstacles::keep_out_at(const PlanePoint& p) const {
    for (std::size_t i = 0; i < m_polygons.size(); ++i) {
        if (m_polygons[i].has_inside(p)) return m_keep_outs[i];
    }
    return std::nullopt;
}

std::optional<int> TravelObstacles::keep_out_between(const PlanePoint& a,
                                                     const PlanePoint& b) const {
    for (std::size_t i = 0; i < m_polygons.size(); ++i) {
        if (m_polygons[i].meets(a, b)) return m_keep_outs[i];
    }
    return std::nullopt;
}

bool TravelObstacles::may_enclose() const {
    for (std::size_t i = 0; i < m_polygons.size(); ++i) {
        for (std::size_t k = i + 1; k < m_polygons.size(); ++k) {
            if (!m_polygons[i].box().is_apart(m_polygons[k].box())) return true;
        }
    }
    return false;
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
