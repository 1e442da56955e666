#include <nmktoolbox/files/nmkreplace_all_strings.h>

#include "files/text_search.h"
#include "files/wide_text.h"

#include <string>

int nmkreplace_all_strings(utString& text, const utString& from, const utString& to) {
    if (text.length() == 0 || from.length() == 0) {
        return 0;
    }
    const std::wstring wide = wide_of(text);
    const std::wstring pattern = wide_of(from);
    const TextSearch<wchar_t> search(pattern);
    WideRanges ranges(text.view());
    std::string out;
    std::size_t kept = 0;  // up to here the text is in `out`
    int count = 0;
    for (std::size_t place = search.find(wide, 0); place != search.npos;
         place = search.find(wide, kept)) {
        ranges.append_range(kept, place, out);
        out += to.view();
        kept = place + pattern.size();
        ++count;
    }
    if (count > 0) {
        ranges.append_range(kept, wide.size(), out);
        text = utString(std::move(out));
    }
    return count;
}
