// excellon_words.cpp: see excellon_words.h.

#include "formats/excellon/excellon_words.h"

#include <algorithm>

#include "formats/excellon/excellon_comments.h"

namespace nmk_excellon {

namespace {

constexpr std::string_view number_letters = "+-.0123456789";

char upper_case(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

}  // namespace

std::optional<ExcellonWord> ExcellonWords::peek() const {
    const std::size_t begin = skip_comments(m_line, m_at);
    if (begin == m_line.size()) {
        return std::nullopt;
    }
    const char letter = upper_case(m_line[begin]);
    if (letter < 'A' || letter > 'Z') {
        return std::nullopt;
    }
    const std::size_t first = begin + 1;
    const std::size_t end =
        std::min(m_line.find_first_not_of(number_letters, first), m_line.size());
    return ExcellonWord{letter, m_line.substr(first, end - first), begin, end};
}

std::optional<ExcellonWord> ExcellonWords::take() {
    std::optional<ExcellonWord> word = peek();
    if (word) {
        m_at = word->end;
    }
    return word;
}

std::string_view ExcellonWords::rest() const { return m_line.substr(skip_comments(m_line, m_at)); }

std::optional<int> small_number(std::string_view text) {
    constexpr int largest = 99999;
    int value = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        value = value * 10 + (digit - '0');
        if (value > largest) {
            return std::nullopt;
        }
    }
    return text.empty() ? std::nullopt : std::optional<int>(value);
}

}  // namespace nmk_excellon
