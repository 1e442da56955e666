#include <nmktoolbox/files/nmk_file_uri_to_path.h>

#include <string_view>

namespace {

constexpr std::string_view scheme = "file:";

}  // namespace

utString nmk_file_uri_to_path(utString uri) {
    std::string_view rest = uri.view();
    if (!rest.starts_with(scheme)) {
        return {};
    }
    rest.remove_prefix(scheme.size());
    const std::size_t slashes = rest.find_first_not_of('/');
    if (slashes == std::string_view::npos) {
        return {};
    }
    rest.remove_prefix(slashes);
    switch (slashes) {
        case 1:
        case 3:
            return utString(rest);
        case 2:
        case 4:
            return utString("\\\\") + utString(rest);
        default:
            return {};
    }
}
