// scaling.h: coordinates multiplied by one factor.
//
// Each coordinate by itself, which a transform would not do: it adds products with 0, and so makes
// NaN of infinite neighbours and 0 of -0.
#pragma once

#include <geometry/giBox3.h>

namespace nmk_trifile {

inline giPoint3 scaled(const giPoint3& point, double factor) noexcept {
    return {point.x * factor, point.y * factor, point.z * factor};
}

/// An empty box stays empty; a negative factor turns the corners round.
inline giBox3 scaled(const giBox3& box, double factor) noexcept {
    return box.is_empty() ? box : giBox3(scaled(box.min(), factor), scaled(box.max(), factor));
}

}  // namespace nmk_trifile
