#include "files/wide_text.h"

#include <apsl/apCodePage.h>
#include <apsl/apUtf8Length.h>

namespace nmk_files {

namespace {

constexpr std::string_view replacement_bytes = "\xEF\xBF\xBD";  // U+FFFD

}  // namespace

std::wstring wide_of(const utString& text) {
    int status = 0;
    return ap_decode(ap_thread_code_page(), text.view(), status);
}

utString narrow_of(std::wstring_view wide) {
    int status = 0;
    return utString(ap_encode(ap_thread_code_page(), wide, status));
}

std::string bytes_of_unit(wchar_t unit) {
    int status = 0;
    std::string bytes = ap_encode(ap_thread_code_page(), {&unit, 1}, status);
    return status != 0 ? bytes : std::string();
}

WideRanges::WideRanges(std::string_view bytes)
    : m_bytes(bytes), m_single_byte(ap_thread_code_page() == ap_code_page_western) {}

void WideRanges::append_range(std::size_t begin, std::size_t end, std::string& out) {
    walk_to(begin);
    if (m_unit < begin && begin < end && !at_end()) {
        out += replacement_bytes;
        step();
    }
    const std::size_t first = m_byte;
    walk_to(end);
    out += m_bytes.substr(first, m_byte - first);
    // A character that begins before `end` and reaches past it is cut apart; one that begins
    // before `begin` was dealt with above, or the range is empty.
    if (begin < end && m_unit >= begin && m_unit < end && !at_end()) {
        out += replacement_bytes;
    }
}

utString WideRanges::range(std::size_t begin, std::size_t end) {
    std::string out;
    append_range(begin, end, out);
    return utString(std::move(out));
}

void WideRanges::step() {
    const Extent here = extent();
    m_byte += here.bytes;
    m_unit += here.units;
}

WideRanges::Extent WideRanges::extent() const {
    if (m_single_byte || static_cast<unsigned char>(m_bytes[m_byte]) < 0x80) {
        return {1, 1};
    }
    bool is_character = false;
    const std::string_view rest(m_bytes.data() + m_byte, m_bytes.size() - m_byte);
    const std::size_t length = ap_utf8_length(rest, is_character);
    return {length, length == 4 ? std::size_t{2} : std::size_t{1}};
}

/// Positions the walk on the character that holds `unit`, or behind the last one.
void WideRanges::walk_to(std::size_t unit) {
    while (!at_end()) {
        const Extent here = extent();
        if (m_unit + here.units > unit) {
            return;
        }
        m_byte += here.bytes;
        m_unit += here.units;
    }
}

}  // namespace nmk_files
