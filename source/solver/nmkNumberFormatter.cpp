// nmkNumberFormatter: a number as text in a field of a given number of characters.
#include <exactmath/exact_logarithm.h>
#include <nmktoolbox/files/nmkformat_double.h>
#include <nmktoolbox/files/nmktrim_trailing_zeros.h>
#include <nmktoolbox/solver/nmkNumberFormatter.h>
#include <utils/utMath.h>

#include <algorithm>
#include <cmath>

namespace {

// Numbers of this order are the smallest in plain notation.
constexpr int min_plain_order = -3;

// Decimals that are zeros are removed again.
constexpr int min_decimals = 1;

// Powers of ten below this order are subnormal or zero: such numbers are multiplied by a power of
// ten first, which is exact enough for the few digits that they have.
constexpr int min_normal_order = -307;
constexpr int orders_added = 100;

/// value over ten to the power of its own order: from 1 to below 10.
double mantissa_of(double value, int order) {
    if (order < min_normal_order) {
        value *= utMath::pow(10.0, orders_added);
        order += orders_added;
    }
    return value / utMath::pow(10.0, order);
}

utString without_zeros_at_the_end(double value, int decimals) {
    utString text = nmkformat_double(value, std::max(decimals, min_decimals));
    nmktrim_trailing_zeros(text);
    return text;
}

}  // namespace

nmkNumberFormatter::nmkNumberFormatter(int digits, int lowest_position)
    : m_digits(digits), m_precision(digits, lowest_position), m_rounder(m_precision) {}

nmkNumberFormatter::nmkNumberFormatter(const nmkNumberFormatter& other)
    : m_digits(other.m_digits), m_precision(other.m_precision), m_rounder(m_precision) {}

nmkNumberFormatter& nmkNumberFormatter::operator=(const nmkNumberFormatter& other) {
    // The rounder stays with this object's own precision.
    m_digits = other.m_digits;
    m_precision = other.m_precision;
    return *this;
}

utString nmkNumberFormatter::format(double value) const {
    const double rounded = m_rounder.round(std::fabs(value));
    if (std::isnan(rounded)) return "nan";
    // The greatest number of a field without room for a digit is below zero.
    if (!(rounded > 0.0)) return "0";
    utString text;
    if (std::isinf(rounded)) {
        text = "inf";
    } else {
        const int order = static_cast<int>(std::floor(nmk_exact::exact_log10(rounded)));
        text = order < min_plain_order || order >= m_digits ? with_exponent(rounded, order)
                                                            : in_plain_notation(rounded, order);
    }
    if (!(value < 0.0)) return text;
    utString with_sign = "-";
    with_sign += text;
    return with_sign;
}

utString nmkNumberFormatter::in_plain_notation(double rounded, int order) const {
    return without_zeros_at_the_end(rounded, -m_precision.least_significant_digit_position(order));
}

utString nmkNumberFormatter::with_exponent(double rounded, int order) const {
    const double mantissa = mantissa_of(rounded, order);
    utString text = without_zeros_at_the_end(
        mantissa, order - m_precision.least_significant_digit_position(order));
    text += "e";
    text << order;
    return text;
}
