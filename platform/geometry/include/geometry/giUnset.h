// giUnset.h: the values that mark a coordinate as unset.
#pragma once

#include <limits>

/// The largest finite double; marks a coordinate as unset.
inline constexpr double gi_unset_high = std::numeric_limits<double>::max();

/// Minus the largest finite double; marks an object as unset through its x.
inline constexpr double gi_unset_low = -std::numeric_limits<double>::max();
