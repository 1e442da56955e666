// giBox2: a rectangle along the axes, given by two opposite corners.
//
// A default box is empty: it contains nothing, and takes the place of the first point added.
#pragma once

#include <geometry/giPoint2.h>
#include <geometry/giUnset.h>

#include <algorithm>

class giBox2 {
  public:
    giBox2() noexcept : min_(gi_unset_high, gi_unset_high), max_(gi_unset_low, gi_unset_low) {}

    /// The corners may be any two opposite ones.
    giBox2(const giPoint2& corner, const giPoint2& opposite) noexcept
        : min_(std::min(corner.x, opposite.x), std::min(corner.y, opposite.y)),
          max_(std::max(corner.x, opposite.x), std::max(corner.y, opposite.y)) {}

    const giPoint2& min() const noexcept { return min_; }
    const giPoint2& max() const noexcept { return max_; }
    double width() const noexcept { return max_.x - min_.x; }
    double height() const noexcept { return max_.y - min_.y; }

    bool is_empty() const noexcept { return max_.x < min_.x || max_.y < min_.y; }

    /// Grows the box so far that it contains `point`.
    void add(const giPoint2& point) noexcept {
        min_ = {std::min(min_.x, point.x), std::min(min_.y, point.y)};
        max_ = {std::max(max_.x, point.x), std::max(max_.y, point.y)};
    }

    /// Non-zero when the point lies in the box; the edge belongs to it.
    int contains(const giPoint2& point) const noexcept {
        const bool in_x = min_.x <= point.x && point.x <= max_.x;
        return in_x && min_.y <= point.y && point.y <= max_.y ? 1 : 0;
    }

  private:
    giPoint2 min_;
    giPoint2 max_;
};
