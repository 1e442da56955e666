#include <nmktoolbox/files/nmkformat_double.h>

#include "files/decimal_digits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

using nmk_files::exact_text;
using nmk_files::exact_text_room;

namespace {

// A double has at most so many digits after its point; all further ones are zeros, and go again.
constexpr int most_places = 1074;
constexpr int places_when_negative = 6;  // what "%f" does with a negative precision
// Sign, 309 digits, point, places, and the zero after a bare point.
constexpr std::size_t longest_text = 1 + 309 + 1 + most_places + 1;

/// Half of ten to the power of -places, correctly rounded; 0 or infinite beyond the doubles.
double half_unit(int places) {
    const int power = std::clamp(-std::max(places, -400), -400, 400);
    std::array<char, 16> text{"5e"};
    const auto end = std::to_chars(text.data() + 2, text.data() + text.size(), power - 1).ptr;
    double half = 0.0;
    if (std::from_chars(text.data(), end, half).ec == std::errc::result_out_of_range) {
        half = power > 0 ? HUGE_VAL : 0.0;
    }
    return half;
}

bool shows_only_zeros(std::string_view text) {
    return text.find_first_of("123456789") == std::string_view::npos;
}

/// A finite value as "%#.*f" writes it.
std::string_view fixed_text(double value, int places, std::array<char, longest_text>& buffer) {
    const int precision = places < 0 ? places_when_negative : std::min(places, most_places);
    char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                              std::chars_format::fixed, precision)
                    .ptr;
    if (precision == 0) {
        *end++ = '.';
    }
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

}  // namespace

utString nmkformat_double(double value, int places) {
    if (!std::isfinite(value)) {
        return nmkformat_double_exact(value);
    }
    if (std::fabs(value) < half_unit(places) || value == 0.0) {
        value = 0.0;
    }
    std::array<char, longest_text> buffer;
    std::string_view text = fixed_text(value, places, buffer);
    if (text.front() == '-' && shows_only_zeros(text)) {
        text.remove_prefix(1);  // half a unit as a double can lie below half a unit
    }
    while (text.size() > 1 && text.back() == '0') {
        text.remove_suffix(1);
    }
    std::string result(text);
    if (result.back() == '.') {
        result += '0';
    }
    return utString(std::move(result));
}

utString nmkformat_double_exact(double value) {
    std::array<char, exact_text_room> buffer;
    return utString(exact_text(value, buffer));
}
