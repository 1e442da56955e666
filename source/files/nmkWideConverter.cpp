#include <nmktoolbox/files/nmkWideConverter.h>

#include "files/wide_text.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

using nmk_files::wide_of;

namespace {

constexpr int first_capacity = 256;

}  // namespace

nmkWideConverter::nmkWideConverter()
    : m_capacity(first_capacity), m_buffer(std::make_unique<wchar_t[]>(first_capacity)) {}

wchar_t* nmkWideConverter::convert(const utString& text) {
    const std::wstring wide = wide_of(text);
    expand_for(static_cast<int>(wide.size()));
    std::copy_n(wide.c_str(), wide.size() + 1, m_buffer.get());
    return m_buffer.get();
}

void nmkWideConverter::expand_for(int length) {
    std::int64_t wanted = m_capacity;
    while (wanted <= length) {
        wanted *= 2;
    }
    if (wanted == m_capacity) {
        return;
    }
    m_capacity =
        static_cast<int>(std::min<std::int64_t>(wanted, std::numeric_limits<std::int32_t>::max()));
    m_buffer = std::make_unique_for_overwrite<wchar_t[]>(static_cast<std::size_t>(m_capacity));
}
