// fitted_text: the width of a text in a drawing, and texts cut to a width.

#include "draw/fitted_text.h"

#include <cstddef>

namespace nmk_draw {

namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";

// Widths of groups of letters, in font sizes.
constexpr std::string_view narrow_letters = "iljI'|";
constexpr double narrow_width = 0.31;
constexpr std::string_view slim_letters = "ftr.,:;()[]{}-/!\"` ";
constexpr double slim_width = 0.42;
constexpr std::string_view wide_letters = "mwMW%@&+=<>#~";
constexpr double wide_width = 0.99;
constexpr double capital_width = 0.76;  // also of other alphabets
constexpr double other_width = 0.64;
constexpr double ideograph_width = 1.0;

/// The number of bytes of the character that begins here. A byte that begins none counts by itself.
std::size_t character_length(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t announced = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    std::size_t length = 1;
    while (length < announced && length < text.size() &&
           (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return length;
}

double character_width(std::string_view character) {
    if (character.size() > 1) {
        return character.size() > 2 && character != ellipsis ? ideograph_width : capital_width;
    }
    const char letter = character[0];
    const auto is_in = [letter](std::string_view letters) {
        return letters.find(letter) != std::string_view::npos;
    };
    const bool is_capital = letter >= 'A' && letter <= 'Z';
    return is_in(narrow_letters) ? narrow_width
           : is_in(slim_letters) ? slim_width
           : is_in(wide_letters) ? wide_width
           : is_capital          ? capital_width
                                 : other_width;
}

}  // namespace

double text_width(std::string_view words, double font_size) {
    double width = 0.0;
    while (!words.empty()) {
        const std::size_t length = character_length(words);
        width += character_width(words.substr(0, length)) * font_size;
        words.remove_prefix(length);
    }
    return width;
}

std::string fitted_text(std::string_view words, double font_size, double width) {
    if (text_width(words, font_size) <= width) {
        return std::string(words);
    }
    double room = width - text_width(ellipsis, font_size);
    std::size_t kept = 0;
    while (kept < words.size()) {
        const std::size_t length = character_length(words.substr(kept));
        room -= character_width(words.substr(kept, length)) * font_size;
        if (room < 0.0) {
            break;
        }
        kept += length;
    }
    return std::string(words.substr(0, kept)) + std::string(ellipsis);
}

}  // namespace nmk_draw
