// giBox3: a block along the axes, given by two opposite corners.
//
// A default box is empty: it contains nothing, and takes the place of the first point added.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnset.h>

#include <algorithm>

class giBox3 {
  public:
    giBox3() noexcept
        : min_(gi_unset_high, gi_unset_high, gi_unset_high),
          max_(gi_unset_low, gi_unset_low, gi_unset_low) {}

    /// The corners may be any two opposite ones.
    giBox3(const giPoint3& corner, const giPoint3& opposite) noexcept
        : min_(lower(corner, opposite)), max_(upper(corner, opposite)) {}

    const giPoint3& min() const noexcept { return min_; }
    const giPoint3& max() const noexcept { return max_; }

    bool is_empty() const noexcept { return max_.x < min_.x || max_.y < min_.y || max_.z < min_.z; }

    /// Grows the box so far that it contains `point`.
    void add(const giPoint3& point) noexcept {
        min_ = lower(min_, point);
        max_ = upper(max_, point);
    }

    /// Non-zero when the point lies in the box; the faces belong to it.
    int contains(const giPoint3& point) const noexcept {
        return lower(min_, point) == min_ && upper(max_, point) == max_ ? 1 : 0;
    }

  private:
    static giPoint3 lower(const giPoint3& a, const giPoint3& b) noexcept {
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
    }
    static giPoint3 upper(const giPoint3& a, const giPoint3& b) noexcept {
        return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
    }

    giPoint3 min_;
    giPoint3 max_;
};
