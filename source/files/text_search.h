// text_search.h: where a pattern occurs in a text, in time linear in both.
//
// Short patterns are left to the standard search. A long one, which that search may compare again
// at every position, uses through the failure table of Knuth, Morris and Pratt, "Fast pattern
// matching in strings", SIAM Journal on Computing 6, 1977.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace nmk_files {

template <class Char>
class TextSearch {
  public:
    static constexpr std::size_t npos = std::basic_string_view<Char>::npos;

    /// `pattern` must not be empty, and must outlive this.
    explicit TextSearch(std::basic_string_view<Char> pattern) : m_pattern(pattern) {
        if (pattern.size() > longest_short_pattern) {
            fill_table();
        }
    }

    /// First position of the pattern at or after `start`; npos if there is none.
    std::size_t find(std::basic_string_view<Char> text, std::size_t start) const {
        return m_border.empty() ? text.find(m_pattern, start) : find_by_table(text, start);
    }

  private:
    static constexpr std::size_t longest_short_pattern = 24;

    /// m_border[i]: how long the longest proper prefix of the pattern is that ends at i.
    void fill_table() {
        m_border.assign(m_pattern.size(), 0);
        for (std::size_t i = 1, matched = 0; i < m_pattern.size(); ++i) {
            while (matched > 0 && m_pattern[i] != m_pattern[matched]) {
                matched = m_border[matched - 1];
            }
            matched += m_pattern[i] == m_pattern[matched] ? 1 : 0;
            m_border[i] = matched;
        }
    }

    std::size_t find_by_table(std::basic_string_view<Char> text, std::size_t start) const {
        for (std::size_t i = start, matched = 0; i < text.size(); ++i) {
            while (matched > 0 && text[i] != m_pattern[matched]) {
                matched = m_border[matched - 1];
            }
            matched += text[i] == m_pattern[matched] ? 1 : 0;
            if (matched == m_pattern.size()) {
                return i + 1 - matched;
            }
        }
        return npos;
    }

    std::basic_string_view<Char> m_pattern;
    std::vector<std::size_t> m_border;
};

}  // namespace nmk_files
