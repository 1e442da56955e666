// escaped_text: text from outside, made safe for XML, for JSON and for one line of a terminal.

#include "text/escaped_text.h"

#include <cstddef>

namespace nmk_app {

namespace {

constexpr std::string_view replacement_character = "\xEF\xBF\xBD";

// A lead byte, the range of the byte after it, and how many bytes follow in all: The Unicode
// Standard, table 3-7 (well-formed UTF-8 byte sequences).
struct Utf8Form {
    unsigned char lead_low, lead_high, second_low, second_high;
    std::size_t following;
};

constexpr Utf8Form utf8_forms[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 1}, {0xE0, 0xE0, 0xA0, 0xBF, 2}, {0xE1, 0xEC, 0x80, 0xBF, 2},
    {0xED, 0xED, 0x80, 0x9F, 2}, {0xEE, 0xEF, 0x80, 0xBF, 2}, {0xF0, 0xF0, 0x90, 0xBF, 3},
    {0xF1, 0xF3, 0x80, 0xBF, 3}, {0xF4, 0xF4, 0x80, 0x8F, 3},
};

bool between(unsigned char low, char byte, unsigned char high) {
    const auto value = static_cast<unsigned char>(byte);
    return low <= value && value <= high;
}

/// Length of the well-formed sequence that the text starts with; 0 where there is none.
std::size_t utf8_length(std::string_view text) {
    if (between(0x00, text[0], 0x7F)) {
        return 1;
    }
    for (const Utf8Form& form : utf8_forms) {
        if (!between(form.lead_low, text[0], form.lead_high)) {
            continue;
        }
        if (text.size() <= form.following || !between(form.second_low, text[1], form.second_high)) {
            return 0;
        }
        for (std::size_t i = 2; i <= form.following; ++i) {
            if (!between(0x80, text[i], 0xBF)) {
                return 0;
            }
        }
        return form.following + 1;
    }
    return 0;
}

/// Copies the text with every character below U+0080 as `escape_ascii` gives it.
template <class EscapeAscii>
std::string escaped(std::string_view text, EscapeAscii escape_ascii) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            result += replacement_character;
        } else if (length == 1) {
            escape_ascii(result, text[0]);
        } else if (text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF")) {
            result += replacement_character;  // U+FFFE and U+FFFF are no characters in XML
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

bool is_control(char c) { return between(0x00, c, 0x1F) || c == 0x7F; }

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

std::string json_text(std::string_view text) {
    return '"' +
           escaped(text,
                   [](std::string& result, char c) {
                       constexpr char digits[] = "0123456789abcdef";
                       if (c == '"' || c == '\\') {
                           result += '\\';
                           result += c;
                       } else if (is_control(c)) {
                           result += "\\u00";
                           result += digits[c >> 4];
                           result += digits[c & 15];
                       } else {
                           result += c;
                       }
                   }) +
           '"';
}

std::string line_text(std::string_view text) {
    return escaped(text, [](std::string& result, char c) { result += is_control(c) ? '?' : c; });
}

}  // namespace nmk_app
