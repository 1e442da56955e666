// marked_value.h: settings that are marked where they are not set.
#pragma once

#include <geometry/giUnset.h>

namespace nmk_trifile {

/// The value, 0.0 in place of the mark; NaN stays.
inline double zero_if_unset(double value) noexcept { return value == gi_unset_low ? 0.0 : value; }

}  // namespace nmk_trifile
