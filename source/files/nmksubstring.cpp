#include <nmktoolbox/files/nmksubstring.h>

#include "files/wide_text.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

using nmk_files::narrow_of;
using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

/// Where the stretch ends; throws for a start outside the text.
std::size_t end_of_stretch(std::size_t size, int start, int length) {
    if (start < 0 || static_cast<std::size_t>(start) > size) {
        throw std::out_of_range("nmksubstring: the start lies outside the text");
    }
    const std::size_t remains = size - static_cast<std::size_t>(start);
    const std::size_t taken =
        length < 0 ? remains : std::min(remains, static_cast<std::size_t>(length));
    return static_cast<std::size_t>(start) + taken;
}

}  // namespace

utString nmksubstring(const utString& text, int start, int length) {
    const std::size_t end = end_of_stretch(wide_of(text).size(), start, length);
    return WideRanges(text.view()).range(static_cast<std::size_t>(start), end);
}

utString nmksubstring(const wchar_t* text, int start, int length) {
    const std::wstring_view wide = text != nullptr ? text : L"";
    const std::size_t end = end_of_stretch(wide.size(), start, length);
    const auto begin = static_cast<std::size_t>(start);
    return narrow_of(wide.substr(begin, end - begin));
}
