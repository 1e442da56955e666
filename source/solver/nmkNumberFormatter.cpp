// nmkNumberFormatter: a number as text in a field of a given number of characters.
#include <nmktoolbox/files/nmkformat_double.h>
#include <nmktoolbox/files/nmktrim_trailing_zeros.h>
#include <nmktoolbox/solver/nmkNumberFormatter.h>
#include <utils/utMath.h>

#include <algorithm>
#include <cmath>

namespace {

// Numbers of this order are the smallest in plain notation.
constexpr int least_plain_order = -3;

// What is left of the decimals is taken off again where they are zeros.
constexpr int fewest_decimals = 1;

// Orders from here on down have no power of ten among the normal doubles, and the lowest none at
// all: such numbers are brought up by that many places first, which is exact enough for the few
// digits that they have.
constexpr int lowest_normal_order = -307;
constexpr int places_brought_up = 100;

/// value over ten to the power of its own order: from 1 to below 10.
double mantissa_of(double value, int order) {
    if (order < lowest_normal_order) {
        value *= utMath::pow(10.0, places_brought_up);
        order += places_brought_up;
    }
    return value / utMath::pow(10.0, order);
}

utString without_zeros_at_the_end(double value, int decimals) {
    utString text = nmkformat_double(value, std::max(decimals, fewest_decimals));
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
    // A field without room for a digit has a greatest number below zero, and shows none.
    if (!(rounded > 0.0)) return "0";
    utString text;
    if (std::isinf(rounded)) {
        text = "inf";
    } else {
        const int order = static_cast<int>(std::floor(std::log10(rounded)));
        text = order < least_plain_order || order >= m_digits ? with_exponent(rounded, order)
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
