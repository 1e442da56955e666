// angle_reduction.h: large angles brought within an eighth of a turn.
#pragma once

#include "double_double.h"

namespace nmk_exact {

/// angle = quarters * pi / 2 + rest, but for whole turns.
struct ReducedAngle {
    int quarters;       // 0 to 3
    DoubleDouble rest;  // at most pi / 4 in size, to about 100 bits
};

/// For a finite angle of at least 2^-10.
///
/// Method: Payne, Hanek, "Radian reduction for trigonometric functions", SIGNUM Newsletter 18
/// (1983): the angle times those digits of 2 / pi that decide the quarter and the rest.
ReducedAngle reduced_angle(double angle);

}  // namespace nmk_exact
