// wide_text.h: narrow text in the thread's code page, and its conversion to wide text.
//
// Functions that count in UTF-16 code units look at the wide text, but what they keep is cut out of
// the bytes: what is ill-formed comes through as it is, and only new characters are encoded.
#pragma once

#include <utils/utString.h>

#include <string>
#include <string_view>

namespace nmk_files {

/// The code units of the text; none for the null string.
std::wstring wide_of(const utString& text);

/// The text of code units; a surrogate without its other half becomes U+FFFD.
utString narrow_of(std::wstring_view wide);

/// The bytes of one code unit; empty where the code page lacks it.
std::string bytes_of_unit(wchar_t unit);

/// Walks along a narrow text and finds the bytes of ranges of its wide text. Ranges must be asked
/// for in ascending order, and then the whole walk takes time in proportion to the text.
class WideRanges {
  public:
    explicit WideRanges(std::string_view bytes);

    /// Appends the bytes of the code units from `begin` to before `end`, which are cut to the text.
    /// Half a character, where a surrogate pair is cut apart, becomes U+FFFD.
    void append_range(std::size_t begin, std::size_t end, std::string& out);

    /// The same as a new text.
    utString range(std::size_t begin, std::size_t end);

    bool at_end() const { return m_byte == m_bytes.size(); }
    /// The position of the walk: the first byte and the first code unit of a character.
    std::size_t byte() const { return m_byte; }
    std::size_t unit() const { return m_unit; }

    /// Moves on by one character, or by one ill-formed part.
    void step();

  private:
    /// Bytes and code units of the character here.
    struct Extent {
        std::size_t bytes;
        std::size_t units;
    };
    Extent extent() const;
    void walk_to(std::size_t unit);

    std::string_view m_bytes;
    bool m_single_byte;
    std::size_t m_byte = 0;
    std::size_t m_unit = 0;
};

}  // namespace nmk_files
