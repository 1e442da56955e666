// text_number.cpp: see text_number.h.

#include "text/text_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace nmk_app {

namespace {

constexpr std::size_t longest_quotation = 40;  // bytes; what a message shows of a text

}  // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<double> read_number(std::string_view text) {
    if (text.starts_with('+') && text.substr(1, 1) != "-") {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> read_coordinate(std::string_view text) {
    const std::optional<double> value = read_number(text);
    if (!value || !(std::abs(*value) <= largest_coordinate)) {
        return std::nullopt;
    }
    return value;
}

std::vector<double> read_coordinates(std::string_view text) {
    std::vector<double> numbers;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::optional<double> number = read_coordinate(text.substr(begin, end - begin));
        if (!number) {
            return {};
        }
        numbers.push_back(*number);
        begin = end + 1;
    }
    return numbers;
}

std::string number_text(double value) {
    std::array<char, 32> room{};
    const auto [stop, error] = std::to_chars(room.data(), room.data() + room.size(), value);
    return error == std::errc() ? std::string(room.data(), stop) : std::string();
}

std::string readable_number(double value) {
    const double size = std::abs(value);
    if (!(size >= 1e-5 && size < 1e15)) {
        return number_text(value);
    }
    std::array<char, 64> room{};
    const auto written =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed);
    return {room.data(), written.ptr};
}

std::string quoted(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char letter : text.substr(0, longest_quotation)) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && byte < 0x7f) {
            result += letter;
        } else {
            result += "\\x";
            result += digits[byte >> 4U];
            result += digits[byte & 15U];
        }
    }
    return result + (text.size() > longest_quotation ? "\"..." : "\"");
}

std::string lower_case(std::string_view text) {
    std::string result(text);
    for (char& letter : result) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return result;
}

}  // namespace nmk_app
