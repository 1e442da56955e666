// exact_power.h: exp and pow that are the same to the last bit everywhere.
//
// Those of the C library may differ in the last bit between processors and versions, and with them
// which move is accepted, and with that the whole order that comes out. These are rounded from a
// result of about 100 bits, and use nothing but additions, multiplications and divisions.
#pragma once

namespace nmk_exact {

/// e to the power x, for x of any size; 0.0 far below zero, infinity far above. NaN for NaN.
double exact_exp(double x);

/// `base` to the power `exponent`, which is above 0 and no integer: infinity past the largest
/// double and for both infinities, 0.0 for 0.0, NaN for a finite base below zero.
double exact_pow(double base, double exponent);

}  // namespace nmk_exact
