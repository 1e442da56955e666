#include <nmktoolbox/files/nmkMultiByteToWideChar.h>

#include "files/wide_text.h"

#include <cstdlib>

using nmk_files::wide_of;

namespace {

constexpr std::size_t most_characters = 0x7fffffff;
constexpr auto conversion_failed = static_cast<std::size_t>(-1);

}  // namespace

std::wstring nmkMultiByteToWideChar::convert(utString text) { return windows_impl(text); }

std::size_t nmkMultiByteToWideChar::length(utString text) { return windows_length(text); }

std::wstring nmkMultiByteToWideChar::windows_impl(const utString& text) { return wide_of(text); }

std::size_t nmkMultiByteToWideChar::windows_length(const utString& text) {
    return text.length() == 0 ? 0 : wide_of(text).size();
}

std::wstring nmkMultiByteToWideChar::portable_impl(const utString& text) {
    std::wstring wide(portable_length(text), L'\0');
    if (!wide.empty()) {
        std::mbstowcs(wide.data(), text.c_str(), wide.size());
    }
    return wide;
}

std::size_t nmkMultiByteToWideChar::portable_length(const utString& text) {
    if (text.length() == 0) {
        return 0;
    }
    const std::size_t length = std::mbstowcs(nullptr, text.c_str(), most_characters);
    return length == conversion_failed ? 0 : length;
}
