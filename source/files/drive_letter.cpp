#include "drive_letter.h"

#include <apsl/apString.h>

#include <string_view>

namespace nmk_files {

bool second_is_colon(const utString& path, const apIStringEncoding& encoding) {
    const std::string_view bytes = path.view();
    if (bytes.find(':') == std::string_view::npos) return false;
    int exact = 0;
    const apString decoded = encoding.decode(path, exact);
    std::wstring_view wide = decoded.view();
    const auto is_between = [&](std::size_t i, unsigned low, unsigned high) {
        return wide.size() > i && static_cast<unsigned>(wide[i]) >= low &&
               static_cast<unsigned>(wide[i]) <= high;
    };
    const bool is_pair = is_between(0, 0xD800, 0xDBFF) && is_between(1, 0xDC00, 0xDFFF);
    const std::size_t second = is_pair ? 2 : 1;
    return wide.size() > second && wide[second] == L':';
}

}  // namespace nmk_files
