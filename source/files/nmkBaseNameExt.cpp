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

utString encoded(std::wstring_view wide, const apIStringEncoding& encoding) {
    int status = 0;
    return encoding.encode(apString(wide), status);
}

/// The bytes behind a mark that encode `wide`, the end of the path. Where no bytes do, `wide` in
/// the encoding.
utString end_bytes(std::string_view path, std::wstring_view wide,
                   const apIStringEncoding& encoding) {
    constexpr std::string_view marks = "/\\";
    for (std::size_t at = path.find_last_of(marks); at != std::string_view::npos;
         at = at == 0 ? std::string_view::npos : path.find_last_of(marks, at - 1)) {
        if (stands_for(path.substr(at + 1), wide, encoding)) {
            return utString(path.substr(at + 1));
        }
    }
    return encoded(wide, encoding);
}

/// The bytes before a "." that encode `wide`, the beginning of the name, found likewise.
utString start_bytes(std::string_view name, std::wstring_view wide,
                     const apIStringEncoding& encoding) {
    for (std::size_t at = name.rfind('.'); at != std::string_view::npos;
         at = at == 0 ? std::string_view::npos : name.rfind('.', at - 1)) {
        if (stands_for(name.substr(0, at), wide, encoding)) {
            return utString(name.substr(0, at));
        }
    }
    return encoded(wide, encoding);
}

}  // namespace

utString nmkBaseName(const utString& path, const apIStringEncoding* encoding) {
    utString name = nmkBaseNameExt(path, encoding);
    int exact = 0;
    const apString wide = chosen(encoding).decode(name, exact);
    const std::size_t dot = wide.view().rfind(L'.');
    if (dot == none) {
        return name;
    }
    const std::wstring_view base = wide.view().substr(0, dot);
    return exact != 0 ? encoded(base, chosen(encoding))
                      : start_bytes(name.view(), base, chosen(encoding));
}

utString nmkBaseNameExt(const utString& path, const apIStringEncoding* encoding) {
    int exact = 0;
    const apString wide = chosen(encoding).decode(path, exact);
    const std::size_t start = name_start(wide.view());
    if (start == 0) {
        return path;
    }
    const std::wstring_view name = wide.view().substr(start);
    return exact != 0 ? encoded(name, chosen(encoding))
                      : end_bytes(path.view(), name, chosen(encoding));
}
