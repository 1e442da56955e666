// exact_arctangent.h: angles from their sines and cosines, with the same bits everywhere.
//
// A result of about 66 bits first, and one of about 95 where 66 leave the rounding in doubt;
// nothing but additions, multiplications, divisions and square roots. Error: below 0.5 + 2^-35
// units in the last place.
#pragma once

namespace nmk_exact {

/// The angle from -pi to pi of the direction (x, y), in radians.
///
/// Signed zeros and infinities as in C: pi for y = 0.0 and x = -0.0, the negative angle for y =
/// -0.0, a multiple of pi / 4 for two infinities. NaN for NaN.
double exact_atan2(double y, double x);

/// The angle from 0 to pi whose cosine is x. NaN beyond -1 and 1.
double exact_acos(double x);

/// The angle from -pi / 2 to pi / 2 whose sine is x; keeps the sign of a zero. NaN beyond -1 and 1.
double exact_asin(double x);

}  // namespace nmk_exact
