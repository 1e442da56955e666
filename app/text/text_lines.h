// text_lines.h: walks a text line by line, with any line ending.
//
// A line ends at a line feed, at a carriage return and a line feed, or at a lone carriage return.
// Lines are views into the text; they are counted from 1, as editors count them. A byte order mark
// at the beginning of the text is skipped.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace nmk_text {

/// One line and its position in the text.
struct TextLine {
    std::string_view text;   // without its line ending
    std::size_t number = 0;  // from 1
    std::size_t begin = 0;   // of its first byte
    std::size_t end = 0;     // of the first byte of the next line
};

/// Returns the lines of a text one by one; the text is borrowed.
class TextLines {
  public:
    explicit TextLines(std::string_view text)
        : m_text(text), m_at(text.starts_with(byte_order_mark) ? byte_order_mark.size() : 0) {}

    /// False after the last line.
    bool next(TextLine& line) {
        if (m_at >= m_text.size()) {
            return false;
        }
        const std::size_t stop = std::min(m_text.find_first_of("\r\n", m_at), m_text.size());
        line.text = m_text.substr(m_at, stop - m_at);
        line.number = ++m_count;
        line.begin = m_at;
        m_at = stop + (m_text.substr(stop, 2) == "\r\n" ? 2U : stop < m_text.size() ? 1U : 0U);
        line.end = m_at;
        return true;
    }

  private:
    static constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";

    std::string_view m_text;
    std::size_t m_at;
    std::size_t m_count = 0;
};

/// The line ending of the first line of the text; a line feed if the text has none.
inline std::string_view line_ending(std::string_view text) {
    const std::size_t stop = text.find_first_of("\r\n");
    if (stop == std::string_view::npos) {
        return "\n";
    }
    return text.substr(stop, text.substr(stop, 2) == "\r\n" ? 2U : 1U);
}

}  // namespace nmk_text
