// max_parts: how many parts a piece is divided into at most, whatever is asked.
//
// Curves are divided until bounds decide. Where coordinates are so large, compared with the curve,
// that rounding is all that is left of it, they never would.
#pragma once

namespace nmk_ngk {

inline constexpr int max_parts = 200000;

}  // namespace nmk_ngk
