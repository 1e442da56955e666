// number_format: numbers as text, the same whatever the locale of the process.

#include "text/number_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace nmk_text {

std::string fixed_number(double value, int decimals) {
    char digits[400];  // 309 digits of the largest double, its decimals, a sign
    const auto written =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    std::string text(digits, written.ptr);
    if (text.front() == '-' && text.find_first_not_of("-0.") == std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

std::string short_number(double value, int decimals) {
    std::string text = fixed_number(value, decimals);
    if (text.find('.') == std::string::npos) {
        return text;
    }
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string exact_number(double value) {
    std::array<char, 32> room{};
    const auto [stop, error] = std::to_chars(room.data(), room.data() + room.size(), value);
    return error == std::errc() ? std::string(room.data(), stop) : std::string();
}

std::string readable_number(double value) {
    const double size = std::abs(value);
    if (!(size >= 1e-5 && size < 1e15)) {
        return exact_number(value);
    }
    std::array<char, 64> room{};
    const auto written =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed);
    return {room.data(), written.ptr};
}

}  // namespace nmk_text
