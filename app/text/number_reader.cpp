// number_reader: strict reading of numbers in files and arguments.

#include "text/number_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace nmk_text {

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
    if (!value || !(std::abs(*value) <= max_coordinate)) {
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

}  // namespace nmk_text
