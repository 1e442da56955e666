#include <nls/nls_scan_number.h>

#include <charconv>
#include <system_error>

namespace {

bool is_white_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Whether digits follow that are neither a word nor the beginning of a hexadecimal number.
bool is_decimal(const char* at, const char* end) {
    if (at == end) return false;
    if (*at == '.') return at + 1 != end && is_digit(at[1]);
    const bool is_hexadecimal = *at == '0' && at + 1 != end && (at[1] == 'x' || at[1] == 'X');
    return is_digit(*at) && !is_hexadecimal;
}

template <class Number>
bool scan(const char*& at, const char* end, Number& value) {
    const char* first = at;
    while (first != end && is_white_space(*first)) ++first;
    const char* digits = first;
    if (digits != end && (*digits == '+' || *digits == '-')) ++digits;
    if (!is_decimal(digits, end)) return false;
    Number read{};
    const auto result = std::from_chars(*first == '+' ? digits : first, end, read);
    if (result.ec != std::errc()) return false;
    value = read;
    at = result.ptr;
    return true;
}

}  // namespace

bool nls_scan_number(const char*& at, const char* end, double& value) {
    return scan(at, end, value);
}

bool nls_scan_number(const char*& at, const char* end, int& value) { return scan(at, end, value); }
