// xml_characters.h: the characters of XML 1.0, fifth edition, sections 2.2 and 2.3, in UTF-8.
//
// Functions that take a pointer read a text that a nul ends, and never past it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nmk_absxml {

/// A character and its bytes; 0 bytes where there is none: ill-formed UTF-8, or the end.
struct Character {
    std::uint32_t code = 0;
    std::size_t length = 0;
};

Character character_at(const char* at) noexcept;

/// Appends the UTF-8 of a character below U+110000.
template <class Text>
void append_character(Text& text, std::uint32_t code) {
    const auto byte = [](std::uint32_t value) { return static_cast<char>(value); };
    if (code < 0x80) {
        text += byte(code);
        return;
    }
    if (code < 0x800) {
        text += byte(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            text += byte(0xE0 | code >> 12);
        } else {
            text += byte(0xF0 | code >> 18);
            text += byte(0x80 | (code >> 12 & 0x3F));
        }
        text += byte(0x80 | (code >> 6 & 0x3F));
    }
    text += byte(0x80 | (code & 0x3F));
}

/// A character that a document may hold, also as a reference.
constexpr bool is_allowed(std::uint32_t code) noexcept {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code < 0xD800 || (code > 0xDFFF && code < 0xFFFE) || (code > 0xFFFF && code < 0x110000);
}

constexpr bool is_space(char byte) noexcept {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

/// The whole of a text.
bool is_name(std::string_view text);
bool is_allowed_text(std::string_view text);

/// What a byte may do to a scan of text: bytes that are in none of the classes are passed over.
enum ByteClass : unsigned char {
    ends_text = 1,           // < & ] and what is not plain ASCII
    ends_double_quoted = 2,  // " < & and what is not plain ASCII
    ends_single_quoted = 4,  // ' < & and what is not plain ASCII
    ends_comment = 8,        // - and what is not plain ASCII
    ends_section = 16,       // ] and what is not plain ASCII
    ends_instruction = 32,   // ? and what is not plain ASCII
    ends_name = 64,          // what is not an ASCII character of a name
    begins_name = 128        // an ASCII character that a name may begin with
};

constexpr std::array<unsigned char, 256> make_byte_classes() {
    std::array<unsigned char, 256> classes{};
    const auto add = [&classes](char byte, unsigned value) {
        unsigned char& entry = classes[static_cast<unsigned char>(byte)];
        entry = static_cast<unsigned char>(entry | value);
    };
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool is_letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        const bool is_name_byte = is_letter || (byte >= '0' && byte <= '9') || byte == '_' ||
                                  byte == ':' || byte == '-' || byte == '.';
        const bool is_plain = byte < 0x80 && is_allowed(byte);
        if (!is_plain) classes[byte] = 63;
        if (!is_name_byte) add(static_cast<char>(byte), ends_name);
        if (is_letter || byte == '_' || byte == ':') add(static_cast<char>(byte), begins_name);
    }
    add('<', ends_text | ends_double_quoted | ends_single_quoted);
    add('&', ends_text | ends_double_quoted | ends_single_quoted);
    add('"', ends_double_quoted);
    add('\'', ends_single_quoted);
    add('-', ends_comment);
    add(']', ends_text | ends_section);
    add('?', ends_instruction);
    return classes;
}

inline constexpr std::array<unsigned char, 256> byte_classes = make_byte_classes();

inline bool is_in_class(char byte, ByteClass which) noexcept {
    return (byte_classes[static_cast<unsigned char>(byte)] & which) != 0;
}

/// The first byte at or behind `at` that is in the class, one that ends something; a nul is in all
/// of those.
inline const char* skip_to(const char* at, ByteClass end) noexcept {
    for (;; at += 4) {
        if (is_in_class(at[0], end)) return at;
        if (is_in_class(at[1], end)) return at + 1;
        if (is_in_class(at[2], end)) return at + 2;
        if (is_in_class(at[3], end)) return at + 3;
    }
}

std::size_t length_of_any_name(const char* at) noexcept;

/// Bytes of the name that begins at `at`; 0 where none does.
inline std::size_t name_length(const char* at) noexcept {
    const char* const end = is_in_class(*at, begins_name) ? skip_to(at + 1, ends_name) : at;
    const bool is_ascii = end != at && static_cast<unsigned char>(*end) < 0x80;
    return is_ascii ? static_cast<std::size_t>(end - at) : length_of_any_name(at);
}

inline const char* skip_spaces(const char* at) noexcept {
    while (is_space(*at)) ++at;
    return at;
}

}  // namespace nmk_absxml
