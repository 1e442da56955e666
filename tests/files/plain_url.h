// plain_url.h: percent signs as URLs have them, written down plainly.
#pragma once

#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>

inline std::string plain_url_escape(const std::string& text) {
    std::string out;
    for (const char c : text) {
        const int value = static_cast<unsigned char>(c);
        if (value != 0 && value < 128 && (std::isalnum(value) || std::strchr("-._~", value))) {
            out += c;
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "%%%02x", static_cast<unsigned>(value));
            out += escaped;
        }
    }
    return out;
}

inline std::string plain_url_unescape(const std::string& text) {
    std::string out;
    const long size = static_cast<long>(text.size());
    for (long i = 0; i < size;) {
        const auto at = [&](long k) {
            return static_cast<unsigned char>(text[static_cast<std::size_t>(k)]);
        };
        if (at(i) == '%' && i < size - 2 && std::isxdigit(at(i + 1)) && std::isxdigit(at(i + 2))) {
            const std::string digits = text.substr(static_cast<std::size_t>(i) + 1, 2);
            out += static_cast<char>(std::stoi(digits, nullptr, 16));
            i += 3;
        } else {
            out += static_cast<char>(at(i));
            i += 1;
        }
    }
    return out;
}
