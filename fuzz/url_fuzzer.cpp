// url_fuzzer: any bytes escaped, unescaped, and taken for the URI of a file.

#include <nmktoolbox/files/nmkEscapeString.h>
#include <nmktoolbox/files/nmk_file_uri_to_path.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "files/plain_url.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

void check_escapes(const std::string& text) {
    const utString escaped = nmkEscapeString(utString(text)).url_escape();
    require(escaped.view() == plain_url_escape(text));
    require(nmkEscapeString(nmk_escape_string_url, escaped).str().view() == text);
    require(nmkEscapeString(nmk_escape_string_url, utString(text)).str().view() ==
            plain_url_unescape(text));
}

/// The path is the end of the URI, behind two backslashes where it is a network path.
void check_uri(const std::string& uri) {
    const utString path = nmk_file_uri_to_path(utString(uri));
    if (path.is_null()) return;
    require(uri.starts_with("file:/"));
    const bool network = path.view().starts_with("\\\\") && !uri.ends_with(path.view());
    require(uri.ends_with(path.view().substr(network ? 2 : 0)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    check_escapes(text);
    check_uri(text);
    check_uri("file:/" + text);
    return 0;
}
