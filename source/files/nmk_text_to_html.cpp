#include <nmktoolbox/files/nmk_text_to_html.h>

#include <string>
#include <string_view>

namespace {

std::string_view entity_of(char byte) {
    switch (byte) {
        case '&':
            return "&amp;";
        case '"':
            return "&quot;";
        case '\'':
            return "&apos;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '\n':
            return "<br/>";
        default:
            return {};
    }
}

}  // namespace

utString nmk_text_to_html(utString text) {
    if (text.is_null()) {
        return text;
    }
    // One pass does what replacing the ampersand first and the rest after it would.
    const std::string_view bytes = text.view();
    std::string out;
    out.reserve(bytes.size());
    std::size_t kept = 0;  // up to here the text is in `out`
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::string_view entity = entity_of(bytes[i]);
        if (!entity.empty()) {
            out += bytes.substr(kept, i - kept);
            out += entity;
            kept = i + 1;
        }
    }
    out += bytes.substr(kept);
    return utString(std::move(out));
}
