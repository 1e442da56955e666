// elastic_limits: the fixed numbers of the weights of the elastic ring.
#pragma once

namespace nmk_ordering::elastic_limits {

// Squared plan distance in the unit box from which on a ring point has no weight at all. No two
// points of the box are further apart than this.
constexpr double squared_reach = 2.0;

// Least sum of weights that may be divided by; below it the sum counts as 1.
constexpr double min_weight_sum = 1e-20;

// Exponent below which exp is zero: it is below half the least double from -745.2 on, and the rest
// is margin. A weight that is known to be zero need not be computed.
constexpr double exponent_of_zero = -760.0;

}  // namespace nmk_ordering::elastic_limits
