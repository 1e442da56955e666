#include "TextFacets.h"

#include <nls/scan_number.h>

#include <algorithm>
#include <cstring>

namespace nmk_stlfile {

namespace {

// Bytes that are read at once.
constexpr std::size_t piece_size = 65536;

// A number has at most this many bytes.
constexpr std::size_t max_number = 512;

bool is_white_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool is_line_end(char c) { return c == '\n' || c == '\r'; }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

TextScanner::TextScanner(apINMKFile& file) : m_file(&file), m_piece(piece_size) {}

bool TextScanner::fill(std::size_t bytes) {
    if (m_is_at_end) return false;
    std::memmove(m_piece.data(), m_piece.data() + m_at, m_end - m_at);
    m_piece_start += static_cast<std::int64_t>(m_at);
    m_end -= m_at;
    m_at = 0;
    const std::size_t room = m_piece.size() - m_end;
    const std::size_t got = m_file->read(m_piece.data() + m_end, 1, room);
    m_end += got;
    m_is_at_end = got < room;
    return m_end >= bytes;
}

void TextScanner::skip_white_space() {
    while (ensure(1)) {
        const char* const begin = m_piece.data() + m_at;
        const char* const end = m_piece.data() + m_end;
        const char* const at = std::find_if_not(begin, end, is_white_space);
        m_at += static_cast<std::size_t>(at - begin);
        if (at != end) return;
    }
}

bool TextScanner::is_at_line_end() {
    while (ensure(1) && is_white_space(peek()) && !is_line_end(peek())) ++m_at;
    return !ensure(1) || is_line_end(peek());
}

std::string_view TextScanner::word() {
    skip_white_space();
    std::size_t length = 0;
    while (ensure(1)) {
        const char* const begin = m_piece.data() + m_at;
        const char* const end = m_piece.data() + m_end;
        const char* const at = std::find_if(begin, end, is_white_space);
        const auto bytes = static_cast<std::size_t>(at - begin);
        const std::size_t kept = std::min(bytes, m_word.size() - length);
        std::transform(begin, begin + kept, m_word.begin() + length, lower);
        length += kept;
        m_at += bytes;
        if (at != end) break;
    }
    return {m_word.data(), length};
}

bool TextScanner::read_word(std::string_view expected) {
    skip_white_space();
    const std::size_t length = expected.size();
    const bool is_plain = ensure(length + 1) && is_white_space(m_piece[m_at + length]) &&
                          std::memcmp(m_piece.data() + m_at, expected.data(), length) == 0;
    if (!is_plain) return word() == expected;
    m_at += length;
    return true;
}

bool TextScanner::number(double& value) {
    skip_white_space();
    ensure(max_number);
    const char* at = m_piece.data() + m_at;
    const char* const end = at + std::min(max_number, m_end - m_at);
    if (!nmk_nls::scan_number(at, end, value)) return false;
    const auto length = static_cast<std::size_t>(at - (m_piece.data() + m_at));
    m_at += length;
    return length < max_number;
}

TextFacets::TextFacets(apINMKFile& file) : m_scanner(file) { file.seek(0, apNMKSeekBegin); }

bool TextFacets::is_text(apINMKFile& file) {
    file.seek(0, apNMKSeekBegin);
    return TextScanner(file).word().starts_with("solid");
}

int TextFacets::read(double* const corners) {
    if (m_status == 0) m_status = m_is_in_solid ? read_facet(corners) : read_between(corners);
    return m_status;
}

// Behind a solid, and before the first one.
int TextFacets::read_between(double* const corners) {
    const std::string_view word = m_scanner.word();
    if (word.empty()) return 1;
    if (word != "solid") return 3;
    m_is_in_solid = true;
    return skip_name() ? read_body(corners, true) : read_facet(corners);
}

int TextFacets::read_facet(double* const corners) {
    const std::string_view word = m_scanner.word();
    if (word == "facet") return read_body(corners, false);
    if (word != "endsolid") return 3;
    // Facets that follow a name on its line belong to the solid all the same.
    if (skip_name()) return read_body(corners, true);
    m_is_in_solid = false;
    return read_between(corners);
}

// What follows the word "facet", or "facet normal".
int TextFacets::read_body(double* const corners, bool is_normal_read) {
    const bool is_whole = skip_normal(is_normal_read) && m_scanner.read_word("loop") &&
                          read_corners(corners) && m_scanner.read_word("endloop") &&
                          m_scanner.read_word("endfacet");
    return is_whole ? 0 : 3;
}

// A normal of any three words, which may be missing; then the word "outer".
bool TextFacets::skip_normal(bool is_word_read) {
    if (!is_word_read) {
        const std::string_view word = m_scanner.word();
        if (word == "outer") return true;
        if (word != "normal") return false;
    }
    for (int i = 0; i < 3; ++i) m_scanner.word();
    return m_scanner.read_word("outer");
}

bool TextFacets::read_corners(double* const corners) {
    for (int i = 0; i < 9; ++i) {
        if (i % 3 == 0 && !m_scanner.read_word("vertex")) return false;
        if (!m_scanner.number(corners[i])) return false;
    }
    return true;
}

// The name ends with its line, or before a facet, as in a text without lines. True where "facet
// normal" has been read.
bool TextFacets::skip_name() {
    bool is_facet = false;
    while (!m_scanner.is_at_line_end()) {
        const std::string_view word = m_scanner.word();
        if (is_facet && word == "normal") return true;
        is_facet = word == "facet";
    }
    return false;
}

}  // namespace nmk_stlfile
