// wrapped_text: text in lines of limited width.

#include "text/wrapped_text.h"

#include <algorithm>
#include <vector>

namespace nmk_text {

namespace {

/// The text in pieces of at most `width` bytes, cut at blanks; `next_width` holds from the second
/// piece on.
std::vector<std::string_view> pieces(std::string_view text, std::size_t width,
                                     std::size_t next_width) {
    std::vector<std::string_view> result;
    while (text.size() > width) {
        std::size_t blank = text.rfind(' ', width);
        if (blank == std::string_view::npos || blank == 0) {
            blank = text.find(' ', 1);
        }
        if (blank == std::string_view::npos) {
            break;
        }
        result.push_back(text.substr(0, blank));
        text.remove_prefix(blank + 1);
        width = next_width;
    }
    result.push_back(text);
    return result;
}

}  // namespace

std::string wrapped(std::string_view text, std::size_t indent, std::size_t width) {
    std::string result;
    const std::size_t room = width - indent;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        for (const std::string_view piece : pieces(text.substr(begin, end - begin), room, room)) {
            if (!piece.empty()) {
                result.append(indent, ' ').append(piece);
            }
            result += '\n';
        }
        begin = end + 1;
    }
    return result;
}

std::string shortened(std::string_view text, std::size_t length) {
    constexpr std::string_view ellipsis = "...";
    const auto begins_character = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    };
    const auto count = std::count_if(text.begin(), text.end(), begins_character);
    if (static_cast<std::size_t>(count) <= length) {
        return std::string(text);
    }
    std::size_t kept = length - std::min(length, ellipsis.size());
    std::size_t end = 0;
    while (end < text.size() && (kept > 0 || !begins_character(text[end]))) {
        kept -= begins_character(text[end]) ? 1U : 0U;
        ++end;
    }
    return std::string(text.substr(0, end)) + std::string(ellipsis);
}

std::string wrapped_command(std::string_view command, std::size_t indent, std::size_t width) {
    constexpr std::size_t further = 4;
    constexpr std::string_view continued = " \\\n";
    const std::size_t room = width - indent - continued.size() + 1;
    std::string result;
    for (const std::string_view piece : pieces(command, room, room - further)) {
        if (!result.empty()) {
            result.append(continued).append(further, ' ');
        }
        result.append(indent, ' ').append(piece);
    }
    return result + "\n";
}

}  // namespace nmk_text
