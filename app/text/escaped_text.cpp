// escaped_text: text from outside, made safe for XML and for one line of a terminal.

#include "text/escaped_text.h"

#include <apsl/apUtf8Length.h>

#include <cstddef>

namespace nmk_text {

namespace {

constexpr std::size_t max_quotation = 40;  // bytes of a text that a message shows

constexpr std::string_view replacement_character = "\xEF\xBF\xBD";

/// Copies the text; `escape_ascii(result, c)` appends each character below U+0080.
template <class EscapeAscii>
std::string escaped(std::string_view text, EscapeAscii escape_ascii) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        bool is_character = false;
        std::size_t length = ap_utf8_length(text, is_character);
        if (!is_character) {
            result += replacement_character;
            length = 1;  // each byte of an ill-formed part is replaced
        } else if (length == 1) {
            escape_ascii(result, text[0]);
        } else if (text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF")) {
            result += replacement_character;  // U+FFFE and U+FFFF are not allowed in XML
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return result;
}

/// For characters below U+0080.
bool is_control(char c) { return c < 0x20 || c == 0x7F; }

}  // namespace

std::string xml_text(std::string_view text) {
    return escaped(text, [](std::string& result, char c) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            case '\'':
                result += "&#39;";
                break;
            default:
                is_control(c) ? result += replacement_character : result += c;
        }
    });
}

std::string line_text(std::string_view text) {
    return escaped(text, [](std::string& result, char c) { result += is_control(c) ? '?' : c; });
}

std::string quoted(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char letter : text.substr(0, max_quotation)) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && byte < 0x7f) {
            result += letter;
        } else {
            result += "\\x";
            result += digits[byte >> 4U];
            result += digits[byte & 15U];
        }
    }
    return result + (text.size() > max_quotation ? "\"..." : "\"");
}

}  // namespace nmk_text
