#include <nmktoolbox/files/nmktokens.h>

#include "files/wide_text.h"

#include <algorithm>
#include <bitset>
#include <string>
#include <string_view>
#include <type_traits>

using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

/// A set of UTF-16 code units, or of bytes.
template <class Char>
class UnitSet {
  public:
    explicit UnitSet(std::basic_string_view<Char> units) {
        for (const Char unit : units) {
            m_units.set(index(unit));
        }
    }
    bool contains(Char unit) const { return m_units[index(unit)]; }

  private:
    static std::size_t index(Char unit) {
        return static_cast<std::size_t>(static_cast<std::make_unsigned_t<Char>>(unit));
    }
    std::bitset<(sizeof(Char) == 1 ? 0x100 : 0x10000)> m_units;
};

struct Token {
    std::size_t begin;
    std::size_t end;
    std::size_t next;  // where the text continues behind it
};

/// The tokens of a wide text; or of a narrow one, where all delimiters are ASCII and so can't be
/// part of another character.
template <class Char>
class TokenScan {
  public:
    TokenScan(std::basic_string_view<Char> text, std::basic_string_view<Char> delimiters)
        : m_text(text), m_delimiters(delimiters) {}

    /// The next token at or after `position`; an empty one where only delimiters are left.
    Token next_token(std::size_t position) const {
        while (position < m_text.size() && m_delimiters.contains(m_text[position])) {
            ++position;
        }
        const bool quoted = position < m_text.size() &&
                            (m_text[position] == Char('\'') || m_text[position] == Char('"'));
        return quoted ? quoted_token(position + 1, m_text[position]) : plain_token(position);
    }

  private:
    Token plain_token(std::size_t begin) const {
        std::size_t end = begin;
        while (end < m_text.size() && !m_delimiters.contains(m_text[end])) {
            ++end;
        }
        return {begin, end, end};
    }

    /// The token from `begin`, right behind its opening mark.
    Token quoted_token(std::size_t begin, Char mark) const {
        // Deliberate: a mark that is the token's first character doesn't close it here.
        for (std::size_t i = begin + 2; i < m_text.size(); ++i) {
            if (m_delimiters.contains(m_text[i]) && m_text[i - 1] == mark) {
                return {begin, i - 1, i};
            }
        }
        const bool closed = m_text.size() > begin && m_text.back() == mark;
        return {begin, m_text.size() - (closed ? 1 : 0), m_text.size()};
    }

    std::basic_string_view<Char> m_text;
    UnitSet<Char> m_delimiters;
};

bool is_ascii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

template <class Char, class Cut>
int add_tokens(std::basic_string_view<Char> text, std::basic_string_view<Char> delimiters, Cut cut,
               utStringcoDList& list) {
    const TokenScan<Char> scan(text, delimiters);
    int count = 0;
    for (std::size_t position = 0; position < text.size(); ++count) {
        const Token token = scan.next_token(position);
        list.insert_last(cut(token.begin, token.end));
        position = token.next;
    }
    return count;
}

}  // namespace

int nmktokens(utString text, utString delimiters, utStringcoDList& list) {
    if (is_ascii(delimiters.view())) {
        const std::string_view bytes = text.view();
        const auto cut = [bytes](std::size_t begin, std::size_t end) {
            return utString(bytes.substr(begin, end - begin));
        };
        return add_tokens(bytes, delimiters.view(), cut, list);
    }
    const std::wstring wide = wide_of(text);
    const std::wstring separators = wide_of(delimiters);
    WideRanges ranges(text.view());
    const auto cut = [&ranges](std::size_t begin, std::size_t end) {
        return ranges.range(begin, end);
    };
    return add_tokens(std::wstring_view(wide), std::wstring_view(separators), cut, list);
}
