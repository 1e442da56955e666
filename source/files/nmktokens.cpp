#include <nmktoolbox/files/nmktokens.h>

#include "files/wide_text.h"

#include <bitset>
#include <string>
#include <string_view>

namespace {

/// A set of UTF-16 code units.
class UnitSet {
  public:
    explicit UnitSet(std::wstring_view units) {
        for (const wchar_t unit : units) {
            m_units.set(static_cast<std::size_t>(unit));
        }
    }
    bool contains(wchar_t unit) const { return m_units[static_cast<std::size_t>(unit)]; }

  private:
    std::bitset<0x10000> m_units;
};

struct Token {
    std::size_t begin;
    std::size_t end;
    std::size_t next;  // where the text goes on behind it
};

/// The token at `begin`, which is inside its opening `mark` if that isn't 0.
Token scan_token(std::wstring_view text, const UnitSet& delimiters, std::size_t begin,
                 wchar_t mark) {
    const auto closed_before = [&](std::size_t i) { return i > begin && text[i - 1] == mark; };
    for (std::size_t i = begin; i < text.size(); ++i) {
        if (!delimiters.contains(text[i])) {
            continue;
        }
        if (mark == 0) {
            return {begin, i, i};
        }
        // Deliberate: a mark that is the token's first character doesn't close it here.
        if (i > begin + 1 && closed_before(i)) {
            return {begin, i - 1, i};
        }
    }
    const bool closed = mark != 0 && closed_before(text.size());
    return {begin, text.size() - (closed ? 1 : 0), text.size()};
}

/// The next token at or after `place`; an empty one where only delimiters are left.
Token next_token(std::wstring_view text, const UnitSet& delimiters, std::size_t place) {
    while (place < text.size() && delimiters.contains(text[place])) {
        ++place;
    }
    const bool quoted = place < text.size() && (text[place] == L'\'' || text[place] == L'"');
    return quoted ? scan_token(text, delimiters, place + 1, text[place])
                  : scan_token(text, delimiters, place, 0);
}

}  // namespace

int nmktokens(utString text, utString delimiters, utStringcoDList& list) {
    const std::wstring wide = wide_of(text);
    const UnitSet separators(wide_of(delimiters));
    WideRanges ranges(text.view());
    int count = 0;
    for (std::size_t place = 0; place < wide.size(); ++count) {
        const Token token = next_token(wide, separators, place);
        list.insert_last(ranges.range(token.begin, token.end));
        place = token.next;
    }
    return count;
}
