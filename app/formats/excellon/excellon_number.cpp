// excellon_number.cpp: see excellon_number.h.

#include "formats/excellon/excellon_number.h"

#include <algorithm>

#include "formats/excellon/excellon_comments.h"
#include "text/text_lines.h"

namespace nmk_excellon {

namespace {

constexpr int unit_decimals = 9;               // of excellon_unit
constexpr std::size_t max_number_length = 40;  // characters of a coordinate

bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }

/// The digits before and after the point, padded as the format requires.
struct SplitNumber {
    std::string whole;
    std::string decimals;
};

/// Splits digits with an optional point; empty for any other text.
std::optional<SplitNumber> split_number(std::string_view digits, const ExcellonFormat& format) {
    const std::size_t point = digits.find('.');
    const std::size_t digit_count = digits.size() - (point == std::string_view::npos ? 0U : 1U);
    if (digit_count == 0 || digits.size() > max_number_length ||
        static_cast<std::size_t>(std::count_if(digits.begin(), digits.end(), is_digit)) !=
            digit_count) {
        return std::nullopt;
    }
    if (point != std::string_view::npos) {
        return SplitNumber{std::string(digits.substr(0, point)),
                           std::string(digits.substr(point + 1))};
    }
    std::string padded(digits);
    if (format.zeros == KeptZeros::leading) {
        const auto width = static_cast<std::size_t>(format.whole_digits);
        padded.append(padded.size() < width ? width - padded.size() : 0, '0');
        return SplitNumber{padded.substr(0, width), padded.substr(width)};
    }
    const auto width = static_cast<std::size_t>(format.decimal_digits);
    padded.insert(0, padded.size() < width ? width - padded.size() : 0, '0');
    return SplitNumber{padded.substr(0, padded.size() - width),
                       padded.substr(padded.size() - width)};
}

/// The value of digits; empty beyond the largest coordinate.
std::optional<std::int64_t> value_of_digits(std::string_view digits) {
    std::int64_t value = 0;
    for (const char digit : digits) {
        value = value * 10 + (digit - '0');
        if (value > max_excellon_coordinate) {
            return std::nullopt;
        }
    }
    return value;
}

std::int64_t power_of_ten(int exponent) {
    std::int64_t power = 1;
    for (int i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}

std::string with_leading_zeros(std::int64_t value, int width) {
    std::string digits = std::to_string(value);
    const auto wanted = static_cast<std::size_t>(width);
    digits.insert(0, digits.size() < wanted ? wanted - digits.size() : 0, '0');
    return digits;
}

void drop_trailing_zeros(std::string& digits, std::size_t at_least) {
    while (digits.size() > at_least && digits.back() == '0') {
        digits.pop_back();
    }
}

std::string point_text(std::int64_t size) {
    std::string decimals = with_leading_zeros(size % excellon_unit, unit_decimals);
    drop_trailing_zeros(decimals, 1);
    return std::to_string(size / excellon_unit) + "." + decimals;
}

/// Zeros at the ends of the coordinates of a program, which show the zeros that it keeps.
struct ZeroEvidence {
    bool leading = false;
    bool trailing = false;

    void add_number(std::string_view digits) {
        if (digits.find_first_not_of('0') == std::string_view::npos) {
            return;
        }
        leading = leading || digits.front() == '0';
        trailing = trailing || digits.back() == '0';
    }

    void add_line(std::string_view line) {
        const CommentedLine parts = split_comments(line, false);
        parts.has_inner ? add_code(without_comments(parts.code)) : add_code(parts.code);
    }

    void add_code(std::string_view line) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (std::string_view("XYxy").find(line[i]) == std::string_view::npos) {
                continue;
            }
            const std::size_t begin = line.find_first_not_of("+- ", i + 1);
            if (begin == std::string_view::npos) {
                return;
            }
            const std::size_t end =
                std::min(line.find_first_not_of("0123456789.", begin), line.size());
            const std::string_view digits = line.substr(begin, end - begin);
            if (digits.find('.') == std::string_view::npos) {
                add_number(digits);
            }
        }
    }
};

}  // namespace

std::optional<std::int64_t> read_excellon_number(std::string_view text,
                                                 const ExcellonFormat& format) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::optional<SplitNumber> split = split_number(text, format);
    if (!split) {
        return std::nullopt;
    }
    drop_trailing_zeros(split->decimals, unit_decimals);
    if (split->decimals.size() > unit_decimals) {
        return std::nullopt;
    }
    split->decimals.append(unit_decimals - split->decimals.size(), '0');
    const std::optional<std::int64_t> size = value_of_digits(split->whole + split->decimals);
    return size && negative ? -*size : size;
}

std::string excellon_number_text(std::int64_t value, const ExcellonFormat& format,
                                 bool with_point) {
    const std::string sign = value < 0 ? "-" : "";
    const std::int64_t size = value < 0 ? -value : value;
    const std::int64_t step = power_of_ten(unit_decimals - format.decimal_digits);
    if (size == 0 && !with_point) {
        return "0";
    }
    if (with_point || size % step != 0) {
        return sign + point_text(size);
    }
    if (format.zeros == KeptZeros::trailing) {
        return sign + std::to_string(size / step);
    }
    const int width = format.whole_digits + format.decimal_digits;
    std::string digits = with_leading_zeros(size / step, width);
    if (digits.size() > static_cast<std::size_t>(width)) {
        return sign + point_text(size);
    }
    drop_trailing_zeros(digits, 1);
    return sign + digits;
}

double excellon_millimetres(std::int64_t value, nmk_job::JobUnits units) {
    // An inch has 254 tenths of a millimetre; both products are exact for every board.
    return units == nmk_job::JobUnits::inches ? static_cast<double>(value * 254) / 1e10
                                              : static_cast<double>(value) / 1e9;
}

KeptZeros kept_zeros_of(std::string_view program) {
    ZeroEvidence evidence;
    nmk_text::TextLines lines(program);
    nmk_text::TextLine line;
    while (lines.next(line) && !line.text.starts_with("M30")) {
        evidence.add_line(line.text);
    }
    return evidence.leading && !evidence.trailing ? KeptZeros::leading : KeptZeros::trailing;
}

}  // namespace nmk_excellon
