// option_values.h: typed values of options: words of a list, numbers of a range, file names.
//
// A setter reads the text of one value into its target and returns the problem: what was expected.
// The reader of the arguments puts the option and the value before it.
#pragma once

#include <concepts>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_shell {

using Problem = std::string;  // one line; empty: none

using Setter = std::function<Problem(const std::string& value)>;

/// A word and the value that it means, with a description for the help that may be empty.
template <class Value>
struct Choice {
    std::string_view name;
    Value value;
    std::string_view about = {};
};

/// The numbers that an option accepts.
struct NumberRange {
    double low;
    bool has_low;           // whether `low` itself is accepted
    double high;            // is accepted
    std::string_view text;  // "a number from 0 up"
    bool is_whole = false;
};

extern const NumberRange from_zero, above_zero;

/// A whole number, from `low` to `high`; `text` describes it.
constexpr NumberRange whole_number(int low, int high, std::string_view text) {
    return {static_cast<double>(low), true, static_cast<double>(high), text, true};
}

/// Reads a number of the range; empty if the text is not one.
std::optional<double> number_of_range(const std::string& text, const NumberRange& range);

/// The number of the value, or "expected " and the range.
template <class Target>
Setter number_setter(Target& target, NumberRange range) {
    return [&target, range](const std::string& text) -> Problem {
        const std::optional<double> number = number_of_range(text, range);
        if (!number) {
            return "expected " + std::string(range.text);
        }
        if constexpr (std::integral<Target>) {
            target = static_cast<Target>(*number);
        } else {
            target = *number;
        }
        return {};
    };
}

/// The name of a file, which must not be empty.
Setter file_setter(std::string& file_name);

/// The text as it is.
template <class Target>
Setter text_setter(Target& target) {
    return [&target](const std::string& text) {
        target = text;
        return Problem();
    };
}

/// The problem of a word that is not in the list, with similar words of the list.
Problem unknown_choice(const std::string& word, const std::vector<std::string>& names);

/// True if the texts are equal but for the case of ASCII letters.
bool is_same_word(std::string_view a, std::string_view b);

/// The value of one of these words, in upper or lower case. `choices` must last.
template <class Target, class Value>
Setter choice_setter(Target& target, std::span<const Choice<Value>> choices) {
    return [&target, choices](const std::string& word) -> Problem {
        std::vector<std::string> names;
        for (const Choice<Value>& choice : choices) {
            if (is_same_word(word, choice.name)) {
                target = choice.value;
                return {};
            }
            names.emplace_back(choice.name);
        }
        return unknown_choice(word, names);
    };
}

/// The word for the value that the target has; "" if it has none of them.
template <class Target, class Value>
std::string name_of_choice(const Target& target, std::span<const Choice<Value>> choices) {
    for (const Choice<Value>& choice : choices) {
        if (target == choice.value) {
            return std::string(choice.name);
        }
    }
    return {};
}

/// The number that the target has; "" if it has none.
std::string number_text(double target);
std::string number_text(const std::optional<double>& target);

}  // namespace nmk_shell
