#include <nmktoolbox/files/nmkWideCharToMultiByte.h>

#include "files/wide_text.h"

#include <cstdlib>
#include <string>

using nmk_files::narrow_of;

utString nmkWideCharToMultiByte::convert(const wchar_t* text) { return windows_impl(text); }

utString nmkWideCharToMultiByte::windows_impl(const wchar_t* text) {
    return text == nullptr ? utString() : narrow_of(text);
}

utString nmkWideCharToMultiByte::portable_impl(const wchar_t* text) {
    if (text == nullptr) {
        return {};
    }
    const std::size_t length = std::wcstombs(nullptr, text, 0);
    if (length == static_cast<std::size_t>(-1)) {
        return {};
    }
    std::string bytes(length, '\0');
    std::wcstombs(bytes.data(), text, length);
    return utString(std::move(bytes));
}
