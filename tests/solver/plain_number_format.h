// plain_number_format: numbers in a field, worked out case by case with the powers written out.
//
// A second reading of the rules, with tables in place of formulas: what fits is looked up, powers
// of ten are read from text, and the digits are cut out of what printf writes.
#pragma once

#include <exactmath/exact_logarithm.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace plain_number_format {

inline double ten_to(long long exponent) {
    return std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
}

inline int characters_of(long long number) {
    return static_cast<int>(std::to_string(number).size());
}

struct Field {
    int digits;
    int lowest;

    /// The greatest order: what the nines left behind "1e" (or the plain digits) can reach.
    long long greatest_order() const {
        if (digits <= 2) return digits - 1;
        return std::stoll(std::string(static_cast<std::size_t>(std::min(digits - 2, 17)), '9'));
    }
    /// The least order: what the nines behind "1e-" (or the plain decimals) can reach.
    long long least_order() const {
        long long least = 1 - digits;
        if (digits > 3)
            least =
                -std::stoll(std::string(static_cast<std::size_t>(std::min(digits - 3, 17)), '9'));
        return std::max<long long>(least, lowest);
    }
    bool is_plain(long long order) const { return order >= -3 && order < digits; }

    /// The last position that is shown of a number of this order.
    long long last_position(long long order) const {
        long long position = 0;
        if (is_plain(order)) {
            // 0.00ddd: the zero before the point takes one of the characters.
            position = order >= 0 ? order - (digits - 1) : -(digits - 1);
        } else {
            // 1.ddde12: the first digit, e and the exponent are taken off the space.
            const int exponent = characters_of(order);
            position = order - (digits - 2 - exponent);
        }
        return std::max<long long>(position, lowest);
    }
};

inline double rounded(const Field& field, double value) {
    if (field.lowest > field.greatest_order()) return 0.0;
    if (std::isnan(value)) return value;
    const double least = ten_to(field.least_order());
    if (field.greatest_order() < 308) {
        const long long order = field.greatest_order();
        const double greatest = ten_to(order + 1) - ten_to(field.last_position(order));
        if (value >= greatest) return greatest;
    }
    if (std::isinf(value)) return value;
    if (value <= least / 2.0) return 0.0;
    if (value <= least) return least;
    const double unit = ten_to(
        field.last_position(static_cast<long long>(std::floor(nmk_exact::exact_log10(value)))));
    double whole = std::floor(value / unit);
    if (value / unit - whole > 0.5) whole += 1.0;
    return whole * unit;
}

/// Fixed notation without zeros at the end of the fraction, and without a point at the end.
inline std::string fixed(double value, long long decimals) {
    char text[512];
    std::snprintf(text, sizeof text, "%.*f", static_cast<int>(std::max(decimals, 1LL)), value);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result;
}

inline std::string format(const Field& field, double value) {
    const double size = rounded(field, std::fabs(value));
    if (std::isnan(size)) return "nan";
    if (!(size > 0.0)) return "0";
    const std::string sign = value < 0.0 ? "-" : "";
    if (std::isinf(size)) return sign + "inf";
    const long long order = static_cast<long long>(std::floor(nmk_exact::exact_log10(size)));
    const long long position = field.last_position(order);
    if (field.is_plain(order)) return sign + fixed(size, -position);
    return sign + fixed(size / ten_to(order), order - position) + "e" + std::to_string(order);
}

/// Characters that take space in the field: all but the sign in front and the point.
inline int space_taken(const std::string& text) {
    int space = static_cast<int>(text.size()) - (text[0] == '-' ? 1 : 0);
    return space - static_cast<int>(std::count(text.begin(), text.end(), '.'));
}

}  // namespace plain_number_format
