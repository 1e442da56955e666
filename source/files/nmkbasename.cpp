#include <nmktoolbox/files/nmkbasename.h>

#include "files/wide_text.h"

#include <string>
#include <string_view>

using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

/// A path in code units, cut at its last separator.
struct CutPath {
    bool found;
    std::size_t separator;  // where it begins
    std::size_t name;       // where the name begins
    std::size_t end;        // where the name ends
};

CutPath cut_path(const utString& path, const utString& separator) {
    const std::wstring wide = wide_of(path);
    const std::wstring mark = wide_of(separator);
    std::wstring_view work = wide;
    if (mark.empty()) {
        return {false, 0, 0, work.size()};
    }
    if (work.ends_with(mark)) {
        work.remove_suffix(mark.size());
    }
    const std::size_t position = work.rfind(mark);
    // Deliberate: a separator at the very beginning is not tested.
    if (position == std::wstring_view::npos || position == 0) {
        return {false, 0, 0, work.size()};
    }
    return {true, position, position + mark.size(), work.size()};
}

}  // namespace

utString nmkbasename(const utString& path, const utString& separator) {
    const CutPath cut = cut_path(path, separator);
    return WideRanges(path.view()).range(cut.name, cut.end);
}

utString nmkpathname(const utString& path, const utString& separator) {
    const CutPath cut = cut_path(path, separator);
    return cut.found ? WideRanges(path.view()).range(0, cut.separator) : utString("");
}
