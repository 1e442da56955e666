// giBox2: a rectangle along the axes, given by two opposite corners.
//
// A default box is empty: it contains nothing, and becomes the first point that is added.
#pragma once

#include <geometry/giPoint2.h>
#include <geometry/giUnset.h>

#include <algorithm>

class giBox2 {
  public:
    giBox2() noexcept : m_min(gi_unset_high, gi_unset_high), m_max(gi_unset_low, gi_unset_low) {}

    /// The corners may be any two opposite ones.
    giBox2(const giPoint2& corner, const giPoint2& opposite) noexcept
        : m_min(std::min(corner.x, opposite.x), std::min(corner.y, opposite.y)),
          m_max(std::max(corner.x, opposite.x), std::max(corner.y, opposite.y)) {}

    const giPoint2& min() const noexcept { return m_min; }
    const giPoint2& max() const noexcept { return m_max; }
    double width() const noexcept { return m_max.x - m_min.x; }
    double height() const noexcept { return m_max.y - m_min.y; }

    bool is_empty() const noexcept { return m_max.x < m_min.x || m_max.y < m_min.y; }

    /// Extends the box to contain `point`.
    void add(const giPoint2& point) noexcept {
        m_min = {std::min(m_min.x, point.x), std::min(m_min.y, point.y)};
        m_max = {std::max(m_max.x, point.x), std::max(m_max.y, point.y)};
    }

    /// Non-zero when the point is in the box; the edge belongs to it.
    int contains(const giPoint2& point) const noexcept {
        const bool in_x = m_min.x <= point.x && point.x <= m_max.x;
        return in_x && m_min.y <= point.y && point.y <= m_max.y ? 1 : 0;
    }

  private:
    giPoint2 m_min;
    giPoint2 m_max;
};
