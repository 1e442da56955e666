// option_values: typed values of options: words of a list, numbers of a range, file names.

#include "shell/option_values.h"

#include <cmath>

#include "text/ascii.h"
#include "text/number_format.h"
#include "text/number_reader.h"
#include "text/similar_names.h"

namespace nmk_shell {

constexpr NumberRange from_zero{0.0, true, nmk_text::max_coordinate, "a number from 0 up"};
constexpr NumberRange above_zero{0.0, false, nmk_text::max_coordinate, "a number above 0"};

std::optional<double> number_of_range(const std::string& text, const NumberRange& range) {
    const std::optional<double> number = nmk_text::read_number(text);
    if (!number || !(*number >= range.low && *number <= range.high) ||
        (*number == range.low && !range.has_low) ||
        (range.is_whole && *number != std::floor(*number))) {
        return std::nullopt;
    }
    return number;
}

Setter file_setter(std::string& file_name) {
    return [&file_name](const std::string& text) -> Problem {
        if (text.empty()) {
            return "expected the name of a file";
        }
        file_name = text;
        return {};
    };
}

Problem unknown_choice(const std::string& word, const std::vector<std::string>& names) {
    const std::string expected = "expected " + nmk_text::list_of(names);
    const std::string similar = nmk_text::did_you_mean(nmk_text::similar_names(word, names));
    return similar.empty() ? expected : expected + "; " + similar;
}

bool is_same_word(std::string_view a, std::string_view b) {
    return nmk_text::lower_case(a) == nmk_text::lower_case(b);
}

std::string number_text(double target) { return nmk_text::readable_number(target); }

std::string number_text(const std::optional<double>& target) {
    return target ? number_text(*target) : "";
}

}  // namespace nmk_shell
