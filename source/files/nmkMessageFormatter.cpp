#include <nmktoolbox/files/nmkMessageFormatter.h>

#include "files/neutral_numbers.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

using nmk_files::NeutralNumbers;

namespace {

constexpr int first_capacity = 127;

/// Appends the format with its "%s" filled in.
void fill_in(std::string_view format, char** arguments, std::string& out) {
    for (std::size_t i = 0; i < format.size(); ++i) {
        const std::string_view two = format.substr(i, 2);
        if (two == "%s" && arguments != nullptr && *arguments != nullptr) {
            out += *arguments++;
            ++i;
        } else if (two == "%%") {
            out += two;
            ++i;
        } else {
            out += format[i];
        }
    }
}

}  // namespace

nmkMessageFormatter::nmkMessageFormatter()
    : m_capacity(first_capacity), m_buffer(std::make_unique<char[]>(first_capacity + 1)) {}

const char* nmkMessageFormatter::unchecked_concatenate(const char* format, ...) {
    if (format == nullptr) {
        return m_buffer.get();
    }
    const NeutralNumbers neutral;
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    const char* result = m_buffer.get();
    if (length >= 0 && length < std::numeric_limits<int>::max() - 1) {
        // Written beside the buffer: an argument may be the text of the call before.
        const auto room = static_cast<std::size_t>(length) + 1;
        const auto text = std::make_unique_for_overwrite<char[]>(room);
        std::vsnprintf(text.get(), room, format, again);
        result = store(text.get(), length);
    }
    va_end(again);
    return result;
}

const char* nmkMessageFormatter::vconcatenate(const char* format, char** arguments) {
    if (format == nullptr) {
        return m_buffer.get();
    }
    std::string text;
    fill_in(format, arguments, text);
    if (text.size() >= static_cast<std::size_t>(std::numeric_limits<int>::max() - 1)) {
        return m_buffer.get();
    }
    return store(text.c_str(), static_cast<int>(text.size()));
}

void nmkMessageFormatter::allocate(int length) {
    if (length + 1 <= m_capacity) {
        return;
    }
    m_buffer = std::make_unique<char[]>(static_cast<std::size_t>(length) + 2);
    m_capacity = length + 1;
}

const char* nmkMessageFormatter::store(const char* text, int length) {
    allocate(length);
    std::memcpy(m_buffer.get(), text, static_cast<std::size_t>(length) + 1);
    return m_buffer.get();
}
