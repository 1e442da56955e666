#include <nmktoolbox/files/nmktrim_trailing_zeros.h>

#include <string>
#include <string_view>

void nmktrim_trailing_zeros(utString& text) {
    const std::string_view bytes = text.view();
    if (bytes.empty()) {
        return;
    }
    std::size_t kept = bytes.size();
    // Deliberate: the scan goes by position alone and never asks for a point.
    while (kept > 2 && bytes[kept - 1] == '0') {
        --kept;
    }
    if (bytes[kept - 1] == '.' || bytes[kept - 1] == ',') {
        --kept;
    }
    if (kept < bytes.size()) {
        text = utString(std::string(bytes.substr(0, kept)));
    }
}
