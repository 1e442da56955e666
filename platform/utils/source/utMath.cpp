#include <utils/utMath.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace {

// The powers of ten that a double can represent; the lowest ones have fewer significant digits.
constexpr int lowest_order = -323;
constexpr int highest_order = 308;
using PowersOfTen = std::array<double, highest_order - lowest_order + 1>;

PowersOfTen nearest_powers_of_ten() {
    PowersOfTen powers{};
    for (int order = lowest_order; order <= highest_order; ++order) {
        const std::string text = "1e" + std::to_string(order);
        std::from_chars(text.data(), text.data() + text.size(),
                        powers[static_cast<std::size_t>(order - lowest_order)]);
    }
    return powers;
}

double power_of_ten(int order) {
    static const PowersOfTen powers = nearest_powers_of_ten();
    if (order < lowest_order) return 0.0;
    if (order > highest_order) return std::numeric_limits<double>::infinity();
    return powers[static_cast<std::size_t>(order - lowest_order)];
}

}  // namespace

double utMath::pow(double base, int exponent) {
    return base == 10.0 ? power_of_ten(exponent) : std::pow(base, exponent);
}
