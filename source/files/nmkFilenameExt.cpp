#include <nmktoolbox/files/nmkFilenameExt.h>

#include <apsl/apstrcasecmp.h>

#include <cstring>
#include <string>
#include <string_view>

namespace {

bool has_extension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos &&
           name.find_first_of("/\\", dot) == std::string_view::npos;
}

}  // namespace

int nmkCheckFilenameExt(const char* name, const char* ext) {
    if (name == nullptr || ext == nullptr) {
        return 0;
    }
    const std::size_t name_length = std::strlen(name);
    const std::size_t ext_length = std::strlen(ext);
    if (name_length < ext_length) {
        return 0;
    }
    return apstrcasecmp(name + (name_length - ext_length), ext) == 0 ? 1 : 0;
}

utString nmkMakeFilenameExt(const char* name, const char* ext) {
    if (name == nullptr) {
        return {};
    }
    std::string_view bytes = name;
    if (bytes.size() >= 2 && bytes.back() == '.') {
        bytes.remove_suffix(1);
        return utString(bytes);
    }
    if (has_extension(bytes)) {
        return utString(bytes);
    }
    std::string with_extension(bytes);
    with_extension += '.';
    with_extension += ext != nullptr ? ext : "";
    return utString(std::move(with_extension));
}
