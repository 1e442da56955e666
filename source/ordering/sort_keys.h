// sort_keys: the numbers by which items compare, as nmkItemSortMethods lists them.
//
// One definition serves the comparisons and the sorters that work on flat arrays of keys, so that
// both see the same bits. p is the item's point, c the comparison point.
#pragma once

#include <exactmath/exact_arctangent.h>
#include <geometry/giPoint3.h>

namespace nmk_ordering::sort_keys {

using Key = double (*)(const giPoint3& p, const giPoint3& c);

inline double x(const giPoint3& p, const giPoint3&) { return p.x; }
inline double y(const giPoint3& p, const giPoint3&) { return p.y; }
inline double z(const giPoint3& p, const giPoint3&) { return p.z; }
inline double xy(const giPoint3& p, const giPoint3&) { return p.y - p.x; }
inline double yx(const giPoint3& p, const giPoint3&) { return p.y + p.x; }

inline double closest(const giPoint3& p, const giPoint3& c) {
    const double dx = p.x - c.x;
    const double dy = p.y - c.y;
    return dx * dx + dy * dy;
}

// Deliberate: x comes first, so that the angle runs clockwise from +y, as on a compass.
inline double radial(const giPoint3& p, const giPoint3& c) {
    return nmk_exact::exact_atan2(p.x - c.x, p.y - c.y);
}

/// How far two `closest` keys of one row may differ. They are squares, and so is the limit.
inline double closest_limit(double tolerance) { return tolerance * tolerance * 10.0; }

}  // namespace nmk_ordering::sort_keys
