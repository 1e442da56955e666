// utString_numbers.cpp: the operations of utString that write and read numbers.
//
// All of them use <charconv>, which does not depend on the locale.
#include <utils/utString.h>

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace {

// Limits of the magnitudes that are written without an exponent: from the first one to below the
// second one. Up to there the digits of an integer are exact.
constexpr double min_plain = 1e-4;
constexpr double end_of_plain = 1e16;

// Enough for every number: sign, 17 digits, decimal point, leading zeros or an exponent.
using NumberBuffer = std::array<char, 64>;

std::string_view shortest_text(double value, NumberBuffer& buffer) {
    if (std::isnan(value)) return "nan";
    const double magnitude = std::fabs(value);
    const bool plain = magnitude == 0.0 || (magnitude >= min_plain && magnitude < end_of_plain);
    const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
    char* const first = buffer.data();
    const auto written = std::to_chars(first, first + buffer.size(), value, format);
    return {first, static_cast<std::size_t>(written.ptr - first)};
}

template <class Integer>
std::string_view decimal_text(Integer value, NumberBuffer& buffer) {
    char* const first = buffer.data();
    const auto written = std::to_chars(first, first + buffer.size(), value);
    return {first, static_cast<std::size_t>(written.ptr - first)};
}

bool is_white_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Where the number begins: after white space, and after a plus sign that no minus sign follows.
std::size_t start_of_number(std::string_view text, std::size_t at) {
    while (at < text.size() && is_white_space(text[at])) ++at;
    const bool plus = at < text.size() && text[at] == '+';
    const bool minus_follows = at + 1 < text.size() && text[at + 1] == '-';
    return plus && !minus_follows ? at + 1 : at;
}

template <class Number>
int parse_number(std::string_view text, Number& value, int& position) noexcept {
    if (position < 0 || static_cast<std::size_t>(position) > text.size()) return 0;
    const char* const end = text.data() + text.size();
    Number read{};
    const auto start = start_of_number(text, static_cast<std::size_t>(position));
    const auto result = std::from_chars(text.data() + start, end, read);
    if (result.ec != std::errc()) return 0;
    value = read;
    position = static_cast<int>(result.ptr - text.data());
    return 1;
}

}  // namespace

utString& utString::append_signed(long long value) {
    NumberBuffer buffer;
    return append(decimal_text(value, buffer));
}

utString& utString::append_unsigned(unsigned long long value) {
    NumberBuffer buffer;
    return append(decimal_text(value, buffer));
}

utString& utString::operator<<(double value) {
    NumberBuffer buffer;
    return append(shortest_text(value, buffer));
}

int utString::parse(double& value, int& position) const noexcept {
    return parse_number(view(), value, position);
}

int utString::parse(int& value, int& position) const noexcept {
    return parse_number(view(), value, position);
}
