// registry_value: a value of the registry: its type, and its data as bytes and as a text.

#include "commands/registry/registry_value.h"

#include <winapi/code_page.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "text/escaped_text.h"

namespace nmk_registry {

namespace {

constexpr nmk_shell::Choice<DWORD> types[] = {
    {"REG_SZ", REG_SZ, "a text"},
    {"REG_EXPAND_SZ", REG_EXPAND_SZ, "a text with names of environment variables"},
    {"REG_DWORD", REG_DWORD, "a whole number of 32 bits, also negative or as 0x1F"},
    {"REG_QWORD", REG_QWORD, "a whole number of 64 bits, likewise"},
    {"REG_MULTI_SZ", REG_MULTI_SZ, "several texts, each an argument"},
    {"REG_BINARY", REG_BINARY, "bytes as hexadecimal digits"},
    {"REG_NONE", REG_NONE, "likewise"},
};

constexpr char nul = '\0';

bool is_text_type(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ; }

bool is_number_type(DWORD type) { return type == REG_DWORD || type == REG_QWORD; }

std::size_t bytes_of_type(DWORD type) { return type == REG_DWORD ? 4 : 8; }

// A whole number of so many bits, in decimal or with 0x; a negative one as its complement.
std::optional<std::uint64_t> read_whole_number(std::string_view text, unsigned bits) {
    const bool is_negative = text.starts_with('-');
    text.remove_prefix(is_negative ? 1 : 0);
    const bool is_hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(is_hexadecimal ? 2 : 0);
    std::uint64_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, is_hexadecimal ? 16 : 10);
    const std::uint64_t greatest = ~std::uint64_t{0} >> (64 - bits);
    if (error != std::errc() || end != text.data() + text.size() || number > greatest ||
        (is_negative && number > greatest / 2 + 1)) {
        return std::nullopt;
    }
    return (is_negative ? ~number + 1 : number) & greatest;
}

nmk_text::Error expected(const std::string& what) { return {{}, 0, "expected " + what}; }

nmk_text::Result<std::string> read_number_data(DWORD type, const std::string& word) {
    const unsigned bits = static_cast<unsigned>(8 * bytes_of_type(type));
    const auto number = read_whole_number(word, bits);
    if (!number) {
        return expected("a whole number of " + std::to_string(bits) + " bits; found " +
                        nmk_text::quoted(word));
    }
    return bytes_of_number(type, *number);
}

nmk_text::Result<std::string> read_texts_data(const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        if (word.empty()) return expected("texts that are not empty; an empty one ends the list");
    }
    return bytes_of_texts(words);
}

nmk_text::Result<std::string> read_hex_data(const std::string& word) {
    const auto bytes = bytes_of_hex(word);
    if (!bytes) {
        return expected("bytes as pairs of hexadecimal digits; found " + nmk_text::quoted(word));
    }
    return *bytes;
}

}  // namespace

bool is_utf8(std::string_view text) {
    return text.empty() || (text.size() <= std::numeric_limits<int>::max() &&
                            MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                                static_cast<int>(text.size()), nullptr, 0) > 0);
}

std::span<const nmk_shell::Choice<DWORD>> value_types() { return types; }

std::string type_name(DWORD type) {
    for (const auto& choice : types) {
        if (choice.value == type) return std::string(choice.name);
    }
    return std::to_string(type);
}

std::optional<std::string> text_of(const Value& value) {
    const bool is_text = is_text_type(value.type) && !value.bytes.empty() &&
                         value.bytes.find(nul) == value.bytes.size() - 1;
    if (!is_text || !is_utf8(value.bytes)) return std::nullopt;
    return value.bytes.substr(0, value.bytes.size() - 1);
}

std::optional<std::uint64_t> number_of(const Value& value) {
    if (!is_number_type(value.type) || value.bytes.size() != bytes_of_type(value.type)) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (std::size_t i = value.bytes.size(); i-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(value.bytes[i]);
    }
    return number;
}

std::optional<std::vector<std::string>> texts_of(const Value& value) {
    std::vector<std::string> texts;
    std::string_view rest = value.bytes;
    if (value.type != REG_MULTI_SZ || !rest.ends_with(nul) || !is_utf8(rest)) return std::nullopt;
    rest.remove_suffix(1);
    while (!rest.empty()) {
        const std::size_t end = rest.find(nul);
        if (end == 0 || end == rest.npos) return std::nullopt;
        texts.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    return texts;
}

std::string bytes_of_text(std::string_view text) { return std::string(text) + nul; }

std::string bytes_of_number(DWORD type, std::uint64_t number) {
    std::string bytes;
    for (std::size_t i = 0; i < bytes_of_type(type); ++i) {
        bytes += static_cast<char>(static_cast<unsigned char>(number >> (8 * i)));
    }
    return bytes;
}

std::string bytes_of_texts(const std::vector<std::string>& texts) {
    std::string bytes;
    for (const std::string& text : texts) bytes += bytes_of_text(text);
    return bytes + nul;
}

std::string hex_text(std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

std::optional<std::string> bytes_of_hex(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        unsigned byte = 0;
        const char* const end = text.data() + std::min(i + 2, text.size());
        if (i + 2 > text.size() || std::from_chars(text.data() + i, end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::string data_text(const Value& value) {
    if (const auto text = text_of(value)) return nmk_text::quoted(*text);
    if (const auto number = number_of(value)) return std::to_string(*number);
    const auto texts = texts_of(value);
    if (!texts) return value.bytes.empty() ? "(no bytes)" : hex_text(value.bytes);
    std::string list;
    for (const std::string& text : *texts) {
        list += (list.empty() ? "" : ", ") + nmk_text::quoted(text);
    }
    return list.empty() ? "(no texts)" : list;
}

std::string plain_data_text(const Value& value) {
    if (const auto text = text_of(value)) return *text + "\n";
    if (const auto number = number_of(value)) return std::to_string(*number) + "\n";
    const auto texts = texts_of(value);
    if (!texts) return hex_text(value.bytes) + "\n";
    std::string lines;
    for (const std::string& text : *texts) lines += text + "\n";
    return lines;
}

nmk_text::Result<std::string> read_data(DWORD type, const std::vector<std::string>& words) {
    if (type == REG_MULTI_SZ) return read_texts_data(words);
    if (words.size() != 1) {
        return expected("one VALUE; found " + std::to_string(words.size()) +
                        " (a text with blanks needs quotes)");
    }
    if (is_text_type(type)) return bytes_of_text(words.front());
    return is_number_type(type) ? read_number_data(type, words.front())
                                : read_hex_data(words.front());
}

}  // namespace nmk_registry
