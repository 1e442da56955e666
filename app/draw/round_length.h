// round_length.h: round numbers for scale bars and grid lines.
#pragma once

namespace nmk_draw {

/// 1, 2 or 5 times a power of ten, at most `length`, which is above 0.
double round_length(double length);

}  // namespace nmk_draw
