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
    constexpr std::string_view special = "&\"'<>\n";
    const std::string_view bytes = text.view();
    std::size_t next = bytes.find_first_of(special);
    if (next == std::string_view::npos) {
        return text;
    }
    // One pass does what replacing the ampersand first and the rest after it would.
    std::string out;
    std::size_t kept = 0;
    for (; next != std::string_view::npos; next = bytes.find_first_of(special, kept)) {
        out += bytes.substr(kept, next - kept);
        out += entity_of(bytes[next]);
        kept = next + 1;
    }
    out += bytes.substr(kept);
    return utString(std::move(out));
}
