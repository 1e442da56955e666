// giBox3: a block along the axes, given by two opposite corners.
//
// A default box is empty: it contains nothing, and becomes the first point that is added.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnset.h>

#include <algorithm>

class giBox3 {
  public:
    giBox3() noexcept
        : m_min(gi_unset_high, gi_unset_high, gi_unset_high),
          m_max(gi_unset_low, gi_unset_low, gi_unset_low) {}

    /// The corners may be any two opposite ones.
    giBox3(const giPoint3& corner, const giPoint3& opposite) noexcept
        : m_min(lower(corner, opposite)), m_max(upper(corner, opposite)) {}

    const giPoint3& min() const noexcept { return m_min; }
    const giPoint3& max() const noexcept { return m_max; }

    bool is_empty() const noexcept {
        return m_max.x < m_min.x || m_max.y < m_min.y || m_max.z < m_min.z;
    }

    /// Extends the box to contain `point`.
    void add(const giPoint3& point) noexcept {
        m_min = lower(m_min, point);
        m_max = upper(m_max, point);
    }

    /// Non-zero when the point is in the box; the faces belong to it.
    int contains(const giPoint3& point) const noexcept {
        return lower(m_min, point) == m_min && upper(m_max, point) == m_max ? 1 : 0;
    }

  private:
    static giPoint3 lower(const giPoint3& a, const giPoint3& b) noexcept {
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
    }
    static giPoint3 upper(const giPoint3& a, const giPoint3& b) noexcept {
        return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
    }

    giPoint3 m_min;
    giPoint3 m_max;
};
