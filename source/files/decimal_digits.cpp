#include "files/decimal_digits.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace nmk_files {

namespace {

constexpr int fewest_digits = 15;
constexpr int most_digits = 17;
constexpr int lowest_fixed_exponent = -4;  // below, "%g" goes over to the form with an exponent

struct Decimal {
    bool negative;
    std::array<char, most_digits> digits;
    int count;
    int exponent;  // of the first digit
};

/// Shortest digits that read back, nearest to the value.
Decimal shortest_decimal(double value) {
    std::array<char, exact_text_room> text;
    const char* end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific)
            .ptr;
    Decimal decimal{};
    const char* next = text.data();
    decimal.negative = *next == '-';
    next += decimal.negative ? 1 : 0;
    for (; *next != 'e'; ++next) {
        if (*next != '.') {
            decimal.digits[static_cast<std::size_t>(decimal.count++)] = *next;
        }
    }
    next += next[1] == '+' ? 2 : 1;  // from_chars takes no plus
    std::from_chars(next, end, decimal.exponent);
    return decimal;
}

char* put_exponent(int exponent, char* out) {
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    const int magnitude = std::abs(exponent);
    if (magnitude < 10) {
        *out++ = '0';
    }
    return std::to_chars(out, out + 4, magnitude).ptr;
}

char* put_scientific(const Decimal& decimal, char* out) {
    *out++ = decimal.digits[0];
    if (decimal.count > 1) {
        *out++ = '.';
        for (int i = 1; i < decimal.count; ++i) {
            *out++ = decimal.digits[static_cast<std::size_t>(i)];
        }
    }
    return put_exponent(decimal.exponent, out);
}

char* put_fixed(const Decimal& decimal, char* out) {
    int position =
        decimal.exponent < 0 ? decimal.exponent : 0;  // power of ten below the point: < 0
    if (decimal.exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        for (++position; position < 0; ++position) {
            *out++ = '0';
        }
    }
    const int before_point = decimal.exponent < 0 ? most_digits + 1 : decimal.exponent + 1;
    for (int i = 0; i < decimal.count; ++i) {
        if (i == before_point) {
            *out++ = '.';
        }
        *out++ = decimal.digits[static_cast<std::size_t>(i)];
    }
    for (int i = decimal.count; decimal.exponent >= 0 && i < before_point; ++i) {
        *out++ = '0';
    }
    return out;
}

/// The layout of "%.*g", without its trailing zeros.
std::string_view general_layout(const Decimal& decimal, int precision,
                                std::array<char, exact_text_room>& buffer) {
    char* out = buffer.data();
    if (decimal.negative) {
        *out++ = '-';
    }
    const bool fixed = decimal.exponent >= lowest_fixed_exponent && decimal.exponent < precision;
    out = fixed ? put_fixed(decimal, out) : put_scientific(decimal, out);
    return {buffer.data(), static_cast<std::size_t>(out - buffer.data())};
}

/// The plain way: write with ever more digits, read back, stop at the first that is equal.
std::string_view tried_digits(double value, std::array<char, exact_text_room>& buffer) {
    std::string_view text;
    for (int digits = fewest_digits; digits <= most_digits; ++digits) {
        const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                        std::chars_format::general, digits)
                              .ptr;
        text = {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
        double read = 0.0;
        const auto result = std::from_chars(buffer.data(), end, read);
        if (result.ec == std::errc() && read == value) {
            break;
        }
    }
    return text;
}

/// Whether the texts that read back reach equally far to both sides of `value`, in the range where
/// any 15 digits survive. There the shortest digits are the nearest ones of their count.
bool is_evenly_spaced(double value) {
    constexpr std::uint64_t fraction_bits = (std::uint64_t{1} << 52) - 1;
    return std::isnormal(value) && (std::bit_cast<std::uint64_t>(value) & fraction_bits) != 0;
}

}  // namespace

std::string_view exact_text(double value, std::array<char, exact_text_room>& buffer) {
    if (!is_evenly_spaced(value)) {
        return tried_digits(value, buffer);
    }
    const Decimal decimal = shortest_decimal(value);
    return general_layout(decimal, decimal.count < fewest_digits ? fewest_digits : decimal.count,
                          buffer);
}

}  // namespace nmk_files
