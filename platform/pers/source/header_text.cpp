#include "header_text.h"

#include <charconv>

namespace nmk_pers {

namespace {

constexpr std::string_view first_line = "nmk archive file 1\n";
constexpr std::string_view order_words = "byte order ";
constexpr std::string_view text_word = "text ";
constexpr std::string_view last_line = "end\n";

bool take(std::string_view& text, std::string_view words) {
    if (!text.starts_with(words)) return false;
    text.remove_prefix(words.size());
    return true;
}

// Takes a whole number from 0 up and the character behind it.
std::optional<std::size_t> take_number(std::string_view& text, char behind) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error != std::errc() || length == text.size() || *end != behind) return std::nullopt;
    text.remove_prefix(length + 1);
    return number;
}

std::optional<utString> take_text(std::string_view& text) {
    const auto size = take_number(text, ' ');
    if (!size || *size >= text.size() || text[*size] != '\n') return std::nullopt;
    const utString taken(text.substr(0, *size));
    text.remove_prefix(*size + 1);
    return taken;
}

}  // namespace

std::string header_text(const psArchiveFileHeader& header) {
    utString text(first_line);
    text << order_words << static_cast<int>(header.byte_order()) << '\n';
    for (const utString& each : header.texts()) {
        text << text_word << each.length() << ' ' << each.view() << '\n';
    }
    text << last_line;
    return std::string(text.view());
}

std::optional<psArchiveFileHeader> read_header(std::string_view text) {
    if (!take(text, first_line) || !take(text, order_words)) return std::nullopt;
    const auto byte_order = take_number(text, '\n');
    if (!byte_order || *byte_order > psByteOrderLittle) return std::nullopt;
    std::vector<utString> texts;
    while (take(text, text_word)) {
        const auto one = take_text(text);
        if (!one) return std::nullopt;
        texts.push_back(*one);
    }
    if (text != last_line) return std::nullopt;
    return psArchiveFileHeader(std::move(texts), static_cast<psByteOrderState>(*byte_order));
}

}  // namespace nmk_pers
