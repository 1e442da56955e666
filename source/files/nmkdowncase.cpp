#include <nmktoolbox/files/nmkdowncase.h>

#include "files/wide_text.h"

#include <apsl/apCharacter.h>

#include <string>

using nmk_files::bytes_of_unit;
using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

wchar_t lower(wchar_t unit) { return ap_is_upper(unit) ? ap_to_lower(unit) : unit; }

wchar_t upper(wchar_t unit) { return ap_is_lower(unit) ? ap_to_upper(unit) : unit; }

/// The bytes of `unit`, or those of the character here where the code page lacks it.
void put_unit(wchar_t unit, WideRanges& ranges, std::size_t index, std::string& out) {
    const std::string bytes = bytes_of_unit(unit);
    if (bytes.empty()) {
        ranges.append_range(index, index + 1, out);
    } else {
        out += bytes;
    }
}

/// Rewrites the text with `mapping` (wide text, index) for each of its code units.
template <class Mapping>
void rewrite(utString& text, Mapping mapping) {
    const std::wstring wide = wide_of(text);
    WideRanges ranges(text.view());
    std::string out;
    out.reserve(text.view().size());
    std::size_t kept = 0;  // up to here the text is in `out`
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const wchar_t unit = mapping(wide, i);
        if (unit == wide[i]) {
            continue;
        }
        ranges.append_range(kept, i, out);
        if (unit > 0 && unit < 0x80) {
            out += static_cast<char>(unit);
        } else {
            put_unit(unit, ranges, i, out);
        }
        kept = i + 1;
    }
    if (kept == 0) {
        return;
    }
    ranges.append_range(kept, wide.size(), out);
    text = utString(std::move(out));
}

}  // namespace

void nmkdowncase(utString& text) {
    rewrite(text, [](const std::wstring& wide, std::size_t i) { return lower(wide[i]); });
}

void nmkupcase(utString& text) {
    rewrite(text, [](const std::wstring& wide, std::size_t i) { return upper(wide[i]); });
}

void nmkcapitalize(utString& text) {
    rewrite(text, [](const std::wstring& wide, std::size_t i) {
        const wchar_t unit = lower(wide[i]);
        return i == 0 ? upper(unit) : unit;
    });
}

void nmkcapitalize_words(utString& text) {
    rewrite(text, [](const std::wstring& wide, std::size_t i) {
        const wchar_t unit = lower(wide[i]);
        return i == 0 || ap_is_space(wide[i - 1]) ? upper(unit) : unit;
    });
}
