// plain_format_double.h: numbers as text by the C library, for a process in the "C" locale.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

inline std::string plain_printed(const char* format, int precision, double value) {
    const int length = std::snprintf(nullptr, 0, format, precision, value);
    std::vector<char> buffer(static_cast<std::size_t>(length) + 1);
    std::snprintf(buffer.data(), buffer.size(), format, precision, value);
    return std::string(buffer.data());
}

/// Half a unit of the last place is read from text, so that it doesn't hang on pow.
inline std::string plain_format_double(double value, int places) {
    const double half = std::strtod(("5e" + std::to_string(-places - 1)).c_str(), nullptr);
    if (std::fabs(value) < half) {
        value = 0.0;
    }
    std::string text = plain_printed("%#.*f", places, value);
    while (text.size() > 1 && text.back() == '0') {
        text.pop_back();
    }
    if (text.back() == '.') {
        text += '0';
    }
    return text == "-0.0" ? "0.0" : text;
}

inline std::string plain_format_double_exact(double value) {
    std::string text;
    for (int digits = 15; digits <= 17; ++digits) {
        text = plain_printed("%.*g", digits, value);
        if (std::strtod(text.c_str(), nullptr) == value) {
            break;
        }
    }
    return text;
}
