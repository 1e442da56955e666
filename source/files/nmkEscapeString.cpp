#include <nmktoolbox/files/nmkEscapeString.h>

#include <string>
#include <string_view>

namespace {

constexpr int not_a_digit = -1;

bool is_unreserved(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '.' || byte == '_' || byte == '~';
}

int digit_value(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    return not_a_digit;
}

/// The byte that the two characters name, or -1.
int named_byte(char high, char low) {
    const int upper = digit_value(high);
    const int lower = digit_value(low);
    return upper == not_a_digit || lower == not_a_digit ? -1 : upper * 16 + lower;
}

}  // namespace

nmkEscapeString::nmkEscapeString(const utString& text) : m_text(text) {}

nmkEscapeString::nmkEscapeString(nmkEscapeStringUrl, const utString& escaped)
    : m_text(url_unescape(escaped)) {}

utString nmkEscapeString::str() const { return m_text; }

utString nmkEscapeString::url_escape() const {
    if (m_text.is_null()) {
        return {};
    }
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out;
    for (const char byte : m_text.view()) {
        if (is_unreserved(byte)) {
            out += byte;
        } else {
            const auto value = static_cast<unsigned char>(byte);
            out += '%';
            out += digits[value >> 4U];
            out += digits[value & 0xFU];
        }
    }
    return utString(std::move(out));
}

utString nmkEscapeString::url_unescape(const utString& escaped) {
    if (escaped.is_null()) {
        return {};
    }
    const std::string_view bytes = escaped.view();
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int named =
            bytes[i] == '%' && i + 2 < bytes.size() ? named_byte(bytes[i + 1], bytes[i + 2]) : -1;
        if (named < 0) {
            out += bytes[i];
        } else {
            out += static_cast<char>(named);
            i += 2;
        }
    }
    return utString(std::move(out));
}
