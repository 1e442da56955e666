#include <nmktoolbox/files/nmkBaseNameExt.h>

#include <apsl/apStringEncodingChooser.h>

#include <string_view>

namespace {

constexpr auto none = std::wstring_view::npos;

const apIStringEncoding& chosen(const apIStringEncoding* encoding) {
    return encoding != nullptr ? *encoding : *apStringEncodingChooser().ut_encoding();
}

/// Where the name begins in a path.
std::size_t name_start(std::wstring_view path) {
    const std::size_t mark = path.find_last_of(L"/\\");
    return mark == none ? 0 : mark + 1;
}

bool stands_for(std::string_view bytes, std::wstring_view wide, const apIStringEncoding& encoding) {
    int status = 0;
    return encoding.decode(utString(bytes), status).view() == wide;
}

/// The bytes behind one of `marks` that stand for `wide`, the end of the path. Where no bytes do,
/// `wide` in the encoding.
utString end_bytes(std::string_view path, std::wstring_view wide, std::string_view marks,
                   const apIStringEncoding& encoding) {
    for (std::size_t at = path.find_last_of(marks); at != std::string_view::npos;
         at = at == 0 ? std::string_view::npos : path.find_last_of(marks, at - 1)) {
        if (stands_for(path.substr(at + 1), wide, encoding)) {
            return utString(path.substr(at + 1));
        }
    }
    int status = 0;
    return encoding.encode(apString(wide), status);
}

/// The bytes before a "." that stand for `wide`, the beginning of the name, found likewise.
utString start_bytes(const utString& name, std::wstring_view wide,
                     const apIStringEncoding& encoding) {
    const std::string_view bytes = name.view();
    for (std::size_t at = bytes.rfind('.'); at != std::string_view::npos;
         at = at == 0 ? std::string_view::npos : bytes.rfind('.', at - 1)) {
        if (stands_for(bytes.substr(0, at), wide, encoding)) {
            return utString(bytes.substr(0, at));
        }
    }
    int status = 0;
    return encoding.encode(apString(wide), status);
}

}  // namespace

utString nmkBaseName(const utString& path, const apIStringEncoding* encoding) {
    const utString name = nmkBaseNameExt(path, encoding);
    int status = 0;
    const apString wide = chosen(encoding).decode(name, status);
    const std::size_t dot = wide.view().rfind(L'.');
    return dot == none ? name : start_bytes(name, wide.view().substr(0, dot), chosen(encoding));
}

utString nmkBaseNameExt(const utString& path, const apIStringEncoding* encoding) {
    int status = 0;
    const apString wide = chosen(encoding).decode(path, status);
    const std::size_t start = name_start(wide.view());
    return start == 0 ? path
                      : end_bytes(path.view(), wide.view().substr(start), "/\\", chosen(encoding));
}
