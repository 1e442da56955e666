// TextFacets: the facets of a text STL, read one after the other.
#pragma once

#include <stlfile/apINMKFile.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace nmk_stlfile {

/// The words and numbers of a text, which is read in large pieces.
class TextScanner {
  public:
    explicit TextScanner(apINMKFile& file);

    /// The next word, in lower case, empty at the end of the file; a long one is cut. Valid until
    /// the next call.
    std::string_view word();

    /// Reads the next word, and returns whether it is `expected`, which is in lower case.
    bool read_word(std::string_view expected);

    /// Reads a number as from_chars takes it, a leading plus sign apart; false where there is none,
    /// or it is outside the range of double.
    bool number(double& value);

    /// Moves over blanks, and returns whether the line ends there.
    bool is_at_line_end();

    /// Bytes that were read.
    std::int64_t position() const noexcept {
        return m_piece_start + static_cast<std::int64_t>(m_at);
    }

  private:
    void skip_white_space();

    // Whether so many bytes follow in the piece, which is filled where they do not.
    bool ensure(std::size_t bytes) { return m_end - m_at >= bytes || fill(bytes); }
    bool fill(std::size_t bytes);
    char peek() const noexcept { return m_piece[m_at]; }

    apINMKFile* m_file;
    std::vector<char> m_piece;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    std::int64_t m_piece_start = 0;
    bool m_is_at_end = false;  // of the file: no more bytes follow the piece
    std::array<char, 16> m_word{};
};

class TextFacets {
  public:
    /// Reads from the beginning of the file.
    explicit TextFacets(apINMKFile& file);

    /// Whether "solid" comes first behind white space.
    static bool is_text(apINMKFile& file);

    /// Reads the next facet: 0, 1 behind the last solid, 3 where the text is cut or something else
    /// was expected. Once that is not 0 it stays.
    int read(double* const corners);

    /// Bytes that were read.
    std::int64_t position() const noexcept { return m_scanner.position(); }

  private:
    int read_between(double* const corners);
    int read_facet(double* const corners);
    int read_body(double* const corners, bool is_normal_read);
    bool read_corners(double* const corners);
    bool skip_normal(bool is_word_read);
    bool skip_name();

    TextScanner m_scanner;
    bool m_is_in_solid = false;
    int m_status = 0;
};

}  // namespace nmk_stlfile
