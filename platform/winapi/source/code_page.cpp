#include <apsl/apCodePage.h>
#include <winapi/code_page.h>
#include <winapi/last_error.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "failure.h"

namespace {

UINT actual_code_page(UINT code_page) {
    const bool of_the_thread = code_page == CP_ACP || code_page == CP_THREAD_ACP;
    return of_the_thread ? ap_thread_code_page() : code_page;
}

bool is_known(UINT code_page) {
    return code_page == ap_code_page_utf8 || code_page == ap_code_page_western;
}

int fail_to_convert(DWORD reason) {
    winapi::fail_with(reason);
    return 0;
}

// The text that a pointer and a length describe; the NUL belongs to it where the length is -1.
template <typename Character>
std::basic_string_view<Character> text_of(const Character* text, int length) {
    if (length < 0) {
        return {text, std::char_traits<Character>::length(text) + 1};
    }
    return {text, static_cast<std::size_t>(length)};
}

template <typename Text, typename Character>
int deliver(const Text& converted, Character* buffer, int room) {
    const auto length = static_cast<int>(converted.size());
    if (room == 0) {
        return length;
    }
    if (buffer == nullptr) {
        return fail_to_convert(ERROR_INVALID_PARAMETER);
    }
    if (length > room) {
        return fail_to_convert(ERROR_INSUFFICIENT_BUFFER);
    }
    std::copy(converted.begin(), converted.end(), buffer);
    return length;
}

}  // namespace

int MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR bytes, int length, LPWSTR wide,
                        int room) {
    const UINT actual = actual_code_page(code_page);
    if (bytes == nullptr || length == 0 || length < -1 || room < 0 || !is_known(actual)) {
        return fail_to_convert(ERROR_INVALID_PARAMETER);
    }
    int exact = 0;
    const std::wstring converted = ap_decode(actual, text_of(bytes, length), exact);
    if (exact == 0 && (flags & MB_ERR_INVALID_CHARS) != 0) {
        return fail_to_convert(ERROR_NO_UNICODE_TRANSLATION);
    }
    return deliver(converted, wide, room);
}

int WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR wide, int length, LPSTR bytes,
                        int room, LPCSTR substitute, LPBOOL substituted) {
    const UINT actual = actual_code_page(code_page);
    if (wide == nullptr || length == 0 || length < -1 || room < 0 || !is_known(actual)) {
        return fail_to_convert(ERROR_INVALID_PARAMETER);
    }
    const bool utf8 = actual == ap_code_page_utf8;
    const bool own_substitute = substitute != nullptr && std::string_view(substitute) != "?";
    if (own_substitute || (utf8 && (substitute != nullptr || substituted != nullptr))) {
        return fail_to_convert(ERROR_INVALID_PARAMETER);
    }
    int exact = 0;
    const std::string converted = ap_encode(actual, text_of(wide, length), exact);
    if (exact == 0 && utf8 && (flags & WC_ERR_INVALID_CHARS) != 0) {
        return fail_to_convert(ERROR_NO_UNICODE_TRANSLATION);
    }
    if (substituted != nullptr) {
        *substituted = exact == 0 ? TRUE : FALSE;
    }
    return deliver(converted, bytes, room);
}
