#include "document_text.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string_view>
#include <utility>

#include "malformed.h"
#include "xml_characters.h"
#include "xml_declaration.h"

namespace nmk_absxml {

namespace {

enum class Form { plain, utf8_with_mark, utf16_little, utf16_big };

// Of a document in UTF-16 either the mark or the "<" that it begins with shows the order of bytes.
Form form_of(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xEF\xBB\xBF")) return Form::utf8_with_mark;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("<\0"sv)) return Form::utf16_little;
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\0<"sv)) return Form::utf16_big;
    return Form::plain;
}

class Utf16Reader {
  public:
    Utf16Reader(std::string_view bytes, bool is_big) : m_bytes(bytes), m_is_big(is_big) {
        if (!at_end() && unit_at(0) == 0xFEFF) m_at = 2;
    }

    bool at_end() const { return m_at + 2 > m_bytes.size(); }
    bool has_half_a_unit() const { return m_at + 1 == m_bytes.size(); }

    /// The next character; a surrogate where its other half is missing.
    std::uint32_t next() {
        const std::uint32_t unit = unit_at(m_at);
        m_at += 2;
        if (unit < 0xD800 || unit > 0xDBFF || at_end()) return unit;
        const std::uint32_t low = unit_at(m_at);
        if (low < 0xDC00 || low > 0xDFFF) return unit;
        m_at += 2;
        return 0x10000 + ((unit - 0xD800) << 10 | (low - 0xDC00));
    }

  private:
    std::uint32_t unit_at(std::size_t at) const {
        const auto first = static_cast<unsigned char>(m_bytes[at]);
        const auto second = static_cast<unsigned char>(m_bytes[at + 1]);
        return m_is_big ? first << 8U | second : second << 8U | first;
    }

    std::string_view m_bytes;
    std::size_t m_at = 0;
    bool m_is_big;
};

void decode_utf16(std::string& text, bool is_big) {
    const std::string bytes = std::exchange(text, {});
    text.reserve(bytes.size());
    Utf16Reader reader(bytes, is_big);
    while (!reader.at_end()) {
        const std::uint32_t code = reader.next();
        if (code >= 0xD800 && code <= 0xDFFF) {
            throw Malformed{text.size(), "half a surrogate pair; expected a character in UTF-16"};
        }
        append_character(text, code);
    }
    if (reader.has_half_a_unit()) {
        throw Malformed{text.size(), "half a code unit at the end; expected two bytes of UTF-16"};
    }
}

void decode_latin1(std::string& text) {
    const auto is_ascii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (std::all_of(text.begin(), text.end(), is_ascii)) return;
    const std::string bytes = std::exchange(text, {});
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) append_character(text, static_cast<unsigned char>(byte));
}

void require_ascii(const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80) {
            throw Malformed{i, "a byte above 127; the declared encoding is US-ASCII"};
        }
    }
}

std::string lower_case(std::string_view text) {
    std::string lower(text);
    for (char& byte : lower) {
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    }
    return lower;
}

[[noreturn]] void refuse(const Declaration& declaration, const std::string& expected) {
    throw Malformed{
        declaration.encoding_offset,
        "the declared encoding is " + shown(declaration.encoding) + "; expected " + expected};
}

// Of a document whose form already shows its encoding.
void require_encoding(const Declaration& declaration, bool is_expected,
                      const std::string& expected) {
    if (!declaration.encoding.empty() && !is_expected) refuse(declaration, expected);
}

void decode_plain(std::string& text, const Declaration& declaration) {
    const std::string encoding = lower_case(declaration.encoding);
    if (encoding.empty() || encoding == "utf-8") return;
    if (encoding == "iso-8859-1") return decode_latin1(text);
    if (encoding == "us-ascii") return require_ascii(text);
    if (encoding.starts_with("utf-16")) {
        refuse(declaration, "UTF-8, in which the document begins");
    }
    refuse(declaration, "UTF-8, UTF-16, ISO-8859-1 or US-ASCII");
}

}  // namespace

std::size_t make_utf8(std::string& text) {
    const Form form = form_of(text);
    const bool is_utf16 = form == Form::utf16_little || form == Form::utf16_big;
    if (is_utf16) decode_utf16(text, form == Form::utf16_big);
    if (form == Form::utf8_with_mark) text.erase(0, 3);
    const Declaration declaration = read_declaration(text);
    const std::string encoding = lower_case(declaration.encoding);
    if (is_utf16) {
        const std::string actual = form == Form::utf16_big ? "utf-16be" : "utf-16le";
        require_encoding(declaration, encoding == "utf-16" || encoding == actual, "UTF-16");
    } else if (form == Form::utf8_with_mark) {
        require_encoding(declaration, encoding == "utf-8", "UTF-8, whose mark comes first");
    } else {
        decode_plain(text, declaration);
    }
    return declaration.length;
}

}  // namespace nmk_absxml
