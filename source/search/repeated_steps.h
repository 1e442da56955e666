// repeated_steps.h: what adding one step to a coordinate again and again leads to.
#pragma once

namespace nmk_search {

/// The value of x after `while (x < limit && x + step != x) x += step;`, to the last bit.
///
/// Takes a few hundred additions at most, however many steps the loop would take: between two
/// powers of two each addition rounds by the same amount, so those steps are one multiplication.
double step_until(double x, double step, double limit);

}  // namespace nmk_search
