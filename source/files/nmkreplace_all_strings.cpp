#include <nmktoolbox/files/nmkreplace_all_strings.h>

#include <nmktoolbox/files/nmkgsub.h>

#include "files/text_search.h"
#include "files/wide_text.h"

#include <string>

using nmk_files::TextSearch;
using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

constexpr wchar_t replacement_character = 0xFFFD;

/// Whether the same places are found in the bytes as in the wide text. Well-formed characters begin
/// with a byte that occurs nowhere else, so they match nothing but themselves; U+FFFD alone is also
/// what ill-formed parts count as.
bool is_found_in_bytes(const utString& pattern) {
    return wide_of(pattern).find(replacement_character) == std::wstring::npos;
}

int replace_in_wide_text(utString& text, const utString& from, const utString& to) {
    const std::wstring wide = wide_of(text);
    const std::wstring pattern = wide_of(from);
    const TextSearch<wchar_t> search(pattern);
    WideRanges ranges(text.view());
    std::string out;
    std::size_t kept = 0;  // up to here the text is in `out`
    int count = 0;
    for (std::size_t position = search.find(wide, 0); position != search.npos;
         position = search.find(wide, kept)) {
        ranges.append_range(kept, position, out);
        out += to.view();
        kept = position + pattern.size();
        ++count;
    }
    if (count > 0) {
        ranges.append_range(kept, wide.size(), out);
        text = utString(std::move(out));
    }
    return count;
}

}  // namespace

int nmkreplace_all_strings(utString& text, const utString& from, const utString& to) {
    if (text.length() == 0 || from.length() == 0) {
        return 0;
    }
    return is_found_in_bytes(from) ? nmkgsub(text, from, to) : replace_in_wide_text(text, from, to);
}
