// tokens_fuzzer: any bytes cut into tokens and lines, and replaced in: nothing is lost or invented.
//
// The first two bytes are the delimiters, and what is replaced by what; the rest is the text.

#include <nmktoolbox/files/nmk_get_token.h>
#include <nmktoolbox/files/nmk_text_to_html.h>
#include <nmktoolbox/files/nmkfreq.h>
#include <nmktoolbox/files/nmkgsub.h>
#include <nmktoolbox/files/nmkreadline.h>
#include <nmktoolbox/files/nmkreplace_all_strings.h>
#include <nmktoolbox/files/nmktokens.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

bool is_ascii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// Each token stands in the text, in order; without quote marks none holds a delimiter.
void check_tokens(const utString& text, const utString& delimiters) {
    utStringcoDList tokens;
    require(nmktokens(text, delimiters, tokens) == tokens.size());
    const bool quoted = text.view().find_first_of("'\"") != std::string_view::npos;
    std::size_t place = 0;
    for (const utString& token : tokens) {
        require(!token.is_null());
        place = text.view().find(token.view(), place);
        require(place != std::string_view::npos);
        place += token.view().size();
        require(quoted || token.view().find_first_of(delimiters.view()) == std::string_view::npos);
    }
}

void check_token_around(const utString& text, const utString& delimiters) {
    const int step = text.length() / 64 + 1;
    for (int position = -1; position <= text.length() + 1; position += step) {
        utString token;
        const int before = nmk_get_token(text, delimiters, position, token);
        require(before >= -1 && before < std::max(text.length(), 1));
        require(token == " " || text.locate_substring(token) >= 0);
        require(nmk_alphanumeric_token(text, position, token) == (token.is_empty() ? 0 : 1));
        require(text.locate_substring(token) >= 0);
    }
}

/// The lines put together again are the text.
void check_lines(const utString& text, char delimiter) {
    std::istringstream stream{std::string(text.view())};
    std::string together;
    utString line;
    while (nmkreadline(stream, line, delimiter, 1)) {
        require(line.view().find(delimiter) == std::string_view::npos);
        together += line.view();
        together += delimiter;
    }
    const std::string_view bytes = text.view();
    if (!bytes.empty() && bytes.back() != delimiter) together.pop_back();
    require(together == bytes);
}

void check_replacing(const utString& text, const utString& from, const utString& to) {
    utString changed = text;
    const int count = nmkgsub(changed, from, to);
    require(changed.length() == text.length() + count * (to.length() - from.length()));
    const bool ascii = std::all_of(text.view().begin(), text.view().end(), is_ascii) &&
                       std::all_of(from.view().begin(), from.view().end(), is_ascii);
    utString changed_wide = text;
    const int count_wide = nmkreplace_all_strings(changed_wide, from, to);
    require(count_wide == nmkfreq(text, from));
    require(!ascii || (count_wide == count && changed_wide == changed));
}

/// With the entities put back the page is the text.
void check_html(const utString& text) {
    utString page = nmk_text_to_html(text);
    require(page.view().find_first_of("\"'\n") == std::string_view::npos);
    nmkgsub(page, "<br/>", "\n");
    require(page.view().find_first_of("<>") == std::string_view::npos);
    nmkgsub(page, "&gt;", ">");
    nmkgsub(page, "&lt;", "<");
    nmkgsub(page, "&apos;", "'");
    nmkgsub(page, "&quot;", "\"");
    nmkgsub(page, "&amp;", "&");
    require(page == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const utString text(bytes.substr(2));
    const utString delimiters(bytes.substr(0, is_ascii(bytes[1]) ? 2 : 1));
    if (is_ascii(bytes[0])) {
        check_tokens(text, delimiters);
        check_token_around(text, delimiters);
    }
    check_lines(text, bytes[0]);
    check_replacing(text, utString(bytes.substr(0, 1)), utString(bytes.substr(1, 1)));
    check_replacing(text, utString(bytes.substr(0, 2)), utString(bytes.substr(0, 1)));
    check_html(text);
    return 0;
}
