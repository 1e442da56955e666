// base64: bytes as text of letters, digits, "+", "/" and "=".

#include "text/base64.h"

#include <algorithm>
#include <cstdint>

namespace nmk_text {

std::string base64_text(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(bytes.size() - at, 3);
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8U | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= count ? digits[group >> (18 - 6 * i) & 63U] : '=';
        }
    }
    return text;
}

}  // namespace nmk_text
