// finite_coordinates.h: whether a point or vector has three numbers that are neither NaN nor
// infinite.
#pragma once

#include <cmath>

namespace nmk_geometry {

template <class Triple>
bool is_finite(const Triple& triple) {
    return std::isfinite(triple.x) && std::isfinite(triple.y) && std::isfinite(triple.z);
}

}  // namespace nmk_geometry
