// job_length: lengths of a file in millimetres.

#include "formats/job/job_length.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace nmk_job {

namespace {

constexpr std::size_t max_digits = 16;  // 254 times a number with more does not fit 64 bits

/// 254 times the number of these digits; 0 if they are not digits, or too many.
std::uint64_t product_of_digits(std::string_view digits) {
    std::uint64_t whole = 0;
    if (digits.size() > max_digits + 1) {
        return 0;
    }
    for (const char digit : digits) {
        if (digit != '.') {
            whole = whole * 10 + static_cast<std::uint64_t>(digit - '0');
        }
    }
    return whole * 254;
}

}  // namespace

double millimetres_of(double value, JobUnits units) {
    const double product = value * mm_of(units);
    std::array<char, 64> room{};
    char* const room_end = room.data() + room.size();
    const auto written = std::to_chars(room.data(), room_end, value < 0.0 ? -value : value,
                                       std::chars_format::scientific);  // "2.8e-02"
    const std::string_view text(room.data(), written.ptr);
    const std::size_t mark = text.find('e');
    if (units == JobUnits::millimetres || mark == std::string_view::npos) {
        return product;  // nothing to convert, or not finite
    }
    const std::uint64_t tenths = product_of_digits(text.substr(0, mark));
    int exponent = 0;
    const std::string_view power = text.substr(mark + (text[mark + 1] == '+' ? 2U : 1U));
    std::from_chars(power.data(), power.data() + power.size(), exponent);
    const auto decimals = static_cast<int>(std::max<std::size_t>(mark, 2) - 2);
    const std::string exact =
        std::to_string(tenths) + "e" + std::to_string(exponent - decimals - 1);
    double result = 0.0;
    const auto read = std::from_chars(exact.data(), exact.data() + exact.size(), result);
    if (tenths == 0 || read.ec != std::errc()) {
        return product;
    }
    return value < 0.0 ? -result : result;
}

}  // namespace nmk_job
