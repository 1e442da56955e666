// escaped_text: text from outside, made safe for XML and for one line of a terminal.

#include "text/escaped_text.h"

#include <apsl/apUtf8Length.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

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

// UTF-8 of the first and last character of each range that a terminal acts upon, or that changes
// the direction of the text around it: such a name could look like another one.
struct Utf8Range {
    std::string_view first, last;
};
constexpr Utf8Range invisible_characters[] = {
    {"\xC2\x80", "\xC2\x9F"},                  // U+0080 to U+009F, the other control characters
    {"\xD8\x9C", "\xD8\x9C"},                  // U+061C, direction
    {"\xE2\x80\x8B", "\xE2\x80\x8F"},          // U+200B to U+200F, no width, direction
    {"\xE2\x80\xA8", "\xE2\x80\xAE"},          // U+2028 to U+202E, line ends, direction
    {"\xE2\x81\xA0", "\xE2\x81\xAF"},          // U+2060 to U+206F, no width, direction
    {"\xEF\xBB\xBF", "\xEF\xBB\xBF"},          // U+FEFF, no width
    {"\xEF\xBF\xB9", "\xEF\xBF\xBB"},          // U+FFF9 to U+FFFB, annotation
    {"\xF3\xA0\x80\x80", "\xF3\xA0\x81\xBF"},  // U+E0000 to U+E007F, tags
};

/// For one well-formed character. The order of UTF-8 texts is that of their characters.
bool is_visible(std::string_view character) {
    if (character.size() == 1) {
        return !is_control(character[0]);
    }
    return std::none_of(std::begin(invisible_characters), std::end(invisible_characters),
                        [&](const Utf8Range& range) {
                            return range.first <= character && character <= range.last;
                        });
}

/// Calls `visit(character, is_shown)` for each character that can be shown as it is, and for each
/// byte of the others.
template <class Visit>
void for_each_part(std::string_view text, Visit visit) {
    while (!text.empty()) {
        bool is_character = false;
        const std::size_t length = ap_utf8_length(text, is_character);
        const std::string_view part = text.substr(0, is_character ? length : 1);
        visit(part, is_character && is_visible(part));
        text.remove_prefix(part.size());
    }
}

void append_as_bytes(std::string& result, std::string_view part) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (const char letter : part) {
        const auto byte = static_cast<unsigned char>(letter);
        result += "\\x";
        result += digits[byte >> 4U];
        result += digits[byte & 15U];
    }
}

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
    std::string result;
    for_each_part(text, [&](std::string_view part, bool is_shown) {
        bool is_character = false;
        ap_utf8_length(part, is_character);
        result += is_shown ? part : is_character ? "?" : replacement_character;
    });
    return result;
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    std::size_t length = 0;
    bool is_cut = false;
    for_each_part(text, [&](std::string_view part, bool is_shown) {
        length += part.size();
        is_cut = is_cut || length > max_quotation;
        if (is_cut) {
            return;
        }
        is_shown ? void(result += part) : append_as_bytes(result, part);
    });
    return result + (is_cut ? "\"..." : "\"");
}

}  // namespace nmk_text
