// excellon_words.h: a line of a drill program as words: a letter and the number behind it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace nmk_excellon {

/// One word, "X-0150": its letter in upper case and the text of its number, which may be empty.
struct ExcellonWord {
    char letter = '\0';
    std::string_view number;
    std::size_t begin = 0;  // of the letter, in the line
    std::size_t end = 0;    // behind the number
};

/// Hands out the words of a line without its comment; blanks between words are skipped.
class ExcellonWords {
  public:
    explicit ExcellonWords(std::string_view line) : m_line(line) {}

    /// The next word and moves on; empty at the end of the line and where no word stands.
    std::optional<ExcellonWord> take();

    /// The next word, left where it is.
    std::optional<ExcellonWord> peek() const;

    /// What has not been taken, from its first byte that is no blank.
    std::string_view rest() const;

  private:
    std::string_view m_line;
    std::size_t m_at = 0;
};

/// A letter of what may stand behind a tool's number: C its diameter, F, S, B, H and Z its use.
inline bool is_tool_parameter(char letter) {
    return std::string_view("CFSBHZ").find(letter) != std::string_view::npos;
}

/// The whole number from 0 to 99999 that the text is, leading zeros allowed; otherwise empty.
std::optional<int> small_number(std::string_view text);

}  // namespace nmk_excellon
