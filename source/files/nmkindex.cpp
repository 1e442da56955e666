#include <nmktoolbox/files/nmkindex.h>

#include "files/text_search.h"
#include "files/wide_text.h"

#include <string>

using nmk_files::TextSearch;
using nmk_files::wide_of;

int nmkindex(const utString& text, char c, int start) {
    if (start < 0 || start >= text.length()) {
        return -1;
    }
    const std::size_t position = text.view().find(c, static_cast<std::size_t>(start));
    return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

int nmkindex(const utString& text, const utString& sub, int start) {
    return nmkpos(text, sub, start);
}

int nmkpos(const utString& text, const utString& sub, int start) {
    if (text.is_null() || sub.is_null() || start < 0) {
        return -1;
    }
    const std::wstring wide = wide_of(text);
    const std::wstring pattern = wide_of(sub);
    const auto first = static_cast<std::size_t>(start);
    if (pattern.empty()) {
        return first <= wide.size() ? start : -1;
    }
    const std::size_t position = TextSearch<wchar_t>(pattern).find(wide, first);
    return position == TextSearch<wchar_t>::npos ? -1 : static_cast<int>(position);
}
