// exact_power.h: exp and pow that return the same bits everywhere.
//
// Those of the C library may differ in the last bit between processors and versions. A decision
// that depends on such a bit, which move is accepted say, would then give another order. These use
// nothing but additions, multiplications and divisions: a result of about 60 bits first, and one of
// about 95 where 60 leave the rounding in doubt. Error: below 0.5 + 2^-35 units in the last place.
#pragma once

namespace nmk_exact {

/// e to the power x, for x of any size; 0.0 far below zero, infinity far above. NaN for NaN.
double exact_exp(double x);

/// `base` to the power `exponent`, which is above 0 and not an integer: infinity past the largest
/// double and for both infinities, 0.0 for 0.0 and -0.0, NaN for a finite base below zero.
double exact_pow(double base, double exponent);

}  // namespace nmk_exact
