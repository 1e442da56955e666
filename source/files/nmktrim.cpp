#include <nmktoolbox/files/nmktrim.h>

#include "files/wide_text.h"

#include <apsl/apCharacter.h>

#include <string>

using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

/// Keeps the text between its white space, of which only the ends asked for go.
void trim_ends(utString& text, bool at_begin, bool at_end) {
    if (text.length() == 0) {
        return;
    }
    const std::wstring wide = wide_of(text);
    std::size_t begin = 0;
    std::size_t end = wide.size();
    while (at_begin && begin < end && ap_is_space(wide[begin])) {
        ++begin;
    }
    while (at_end && begin < end && ap_is_space(wide[end - 1])) {
        --end;
    }
    if (begin > 0 || end < wide.size()) {
        text = WideRanges(text.view()).range(begin, end);
    }
}

}  // namespace

void nmkltrim(utString& text) { trim_ends(text, true, false); }
void nmkrtrim(utString& text) { trim_ends(text, false, true); }
void nmktrim(utString& text) { trim_ends(text, true, true); }
