// excellon_words.h: a line of a drill program as words: a letter and the number after it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace nmk_excellon {

/// One word, "X-0150": its letter in upper case and the text of its number, which may be empty.
struct ExcellonWord {
    char letter = '\0';
    std::string_view number;
    std::size_t begin = 0;  // position of the letter in the line
    std::size_t end = 0;    // position after the number
};

/// Returns the words of a line one by one; blanks and closed comments between words are skipped.
class ExcellonWords {
  public:
    explicit ExcellonWords(std::string_view line) : m_line(line) {}

    /// Takes the next word; empty at the end of the line and at a character that begins no word.
    std::optional<ExcellonWord> take();

    /// The same, without taking the word.
    std::optional<ExcellonWord> peek() const;

    /// The text that has not been taken, without leading blanks and comments.
    std::string_view rest() const;

    /// The position in the line after the word that was taken last.
    std::size_t position() const { return m_at; }

  private:
    std::string_view m_line;
    std::size_t m_at = 0;
};

/// True for the letter of a parameter of a tool: C for the diameter, F, S, B, H and Z for its use.
inline bool is_tool_parameter(char letter) {
    return std::string_view("CFSBHZ").find(letter) != std::string_view::npos;
}

/// The text as a whole number from 0 to 99999, leading zeros allowed; empty for any other text.
std::optional<int> small_number(std::string_view text);

}  // namespace nmk_excellon
