#include <nmktoolbox/files/nmk_strip_end_substring.h>

#include "files/wide_text.h"

#include <string>

using nmk_files::wide_of;
using nmk_files::WideRanges;

bool nmk_strip_end_substring(utString& text, const utString& suffix) {
    if (text.is_null() || suffix.is_null()) {
        return false;
    }
    const std::wstring wide = wide_of(text);
    const std::wstring end = wide_of(suffix);
    // Deliberate: strictly shorter, so that something is always left.
    if (end.size() >= wide.size() || !wide.ends_with(end)) {
        return false;
    }
    text = WideRanges(text.view()).range(0, wide.size() - end.size());
    return true;
}
