// round_length: round numbers for scale bars and grid lines.

#include "draw/round_length.h"

#include <cmath>

namespace nmk_draw {

double round_length(double length) {
    const double power = std::pow(10.0, std::floor(std::log10(length)));
    return length >= 5 * power ? 5 * power : length >= 2 * power ? 2 * power : power;
}

}  // namespace nmk_draw
