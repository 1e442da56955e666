// nmkNumericalPrecision: what a field of a given number of characters can show of a number.
//
// Positions are computed in 64 bits and cut to the range of int, so that no field, however odd,
// overflows.
#include <nmktoolbox/solver/nmkNumericalPrecision.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

// Numbers of this order are the smallest in plain notation.
constexpr int min_plain_order = -3;

// From this exponent on, a power of ten is beyond every int.
constexpr std::int64_t exponent_beyond_int = 10;

int cut_to_int(std::int64_t value) {
    constexpr std::int64_t lowest = std::numeric_limits<int>::min();
    constexpr std::int64_t highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}

/// 10 to a power that is not negative; beyond int, some number beyond int.
std::int64_t power_of_ten(std::int64_t exponent) {
    std::int64_t power = 1;
    for (std::int64_t i = 0; i < std::min(exponent, exponent_beyond_int); ++i) power *= 10;
    return power;
}

/// Digits of the exponent less one: its own order. 0 for 0.
std::int64_t order_of_exponent(std::int64_t exponent) {
    std::int64_t order = 0;
    for (std::int64_t rest = exponent < 0 ? -exponent : exponent; rest >= 10; rest /= 10) ++order;
    return order;
}

}  // namespace

nmkNumericalPrecision::nmkNumericalPrecision(int digits, int lowest_position)
    : m_digits(digits), m_lowest_position(lowest_position) {}

int nmkNumericalPrecision::constraints_satisfiable() const {
    return m_lowest_position <= maximum_order() ? 1 : 0;
}

int nmkNumericalPrecision::least_significant_digit_position(int order) const {
    const std::int64_t o = order;
    const std::int64_t d = m_digits;
    std::int64_t position = 0;
    if (o >= min_plain_order && o < d) {
        // Below 1 the leading zero takes a character too, and the position depends on the space
        // alone.
        position = o >= 0 ? o - d + 1 : 1 - d;
    } else {
        const std::int64_t e = order_of_exponent(o);
        // A negative exponent needs one more character, for its sign.
        position = o >= d ? o - d + e + 3 : o - d + e + 4;
    }
    return cut_to_int(std::max<std::int64_t>(position, m_lowest_position));
}

int nmkNumericalPrecision::maximum_order() const { return maximum_order_without_bound(); }

int nmkNumericalPrecision::minimum_order() const {
    return std::max(minimum_order_without_bound(), m_lowest_position);
}

int nmkNumericalPrecision::maximum_order_without_bound() const {
    const std::int64_t d = m_digits;
    return cut_to_int(d > 2 ? power_of_ten(d - 2) - 1 : d - 1);
}

int nmkNumericalPrecision::minimum_order_without_bound() const {
    const std::int64_t d = m_digits;
    return cut_to_int(d > 3 ? 1 - power_of_ten(d - 3) : 1 - d);
}
