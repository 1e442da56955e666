// text_fuzzer: any bytes through the string toolkit: tokens, replacement, URLs, URIs, numbers.
//
// The first two bytes say which byte separates and where to look.

#include <nmktoolbox/files.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool is_part(const utString& part, const utString& whole) {
    return whole.view().find(part.view()) != std::string_view::npos;
}

void cut(const utString& text, const utString& mark, int place) {
    utStringcoDList list;
    nmktokens(text, mark, list);
    utString token;
    nmk_get_token(text, mark, place, token);
    require(token.view() == " " || is_part(token, text));
    nmk_alphanumeric_token(text, place, token);
    require(is_part(token, text));
    utString trimmed = text;
    nmktrim(trimmed);
    require(is_part(trimmed, text));
    nmkbasename(text, mark);
    nmkpathname(text, mark);
    require(is_part(nmkBaseName(text, nullptr), text));
    const int length = nmkstring_length(text);
    const int start = place % (length + 1);
    require(nmkstring_length(nmksubstring(text, start, place)) == std::min(place, length - start));
}

void change(const utString& text, const utString& mark) {
    utString replaced = text;
    const int count = nmkfreq(text, mark);
    require(nmkreplace_all_strings(replaced, mark, mark) == count);
    for (const auto function : {nmkdowncase, nmkupcase, nmkcapitalize, nmkcapitalize_words}) {
        utString changed = text;
        function(changed);
        require(nmkstring_length(changed) == nmkstring_length(text));
    }
    nmk_text_to_html(text);
    nmk_strip_end_substring(replaced, mark);
}

void translate(const utString& text) {
    const utString escaped = nmkEscapeString(text).url_escape();
    require(nmkEscapeString(nmk_escape_string_url, escaped).str() == text);
    nmkEscapeString(nmk_escape_string_url, text).str();
    nmk_file_uri_to_path(text);
    nmk_file_uri_to_path(utString("file:") + text);
    std::istringstream stream{std::string(text.view())};
    utString line;
    while (nmkreadline(stream, line, '\n', 1)) {
        require(is_part(line, text));
    }
}

void write_number(const std::uint8_t* data, std::size_t size, int places) {
    double number = 0.0;
    std::memcpy(&number, data, std::min(size, sizeof number));
    const double read = std::strtod(nmkformat_double_exact(number).c_str(), nullptr);
    require(read == number || number != number);
    utString text = nmkformat_double(number, places);
    nmktrim_trailing_zeros(text);
    require(!text.is_empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const utString mark(std::string(1, static_cast<char>(data[0])));
    const int place = data[1];
    const utString text(std::string(reinterpret_cast<const char*>(data) + 2, size - 2));
    cut(text, mark, place);
    change(text, mark);
    translate(text);
    write_number(data + 2, size - 2, place - 20);
    return 0;
}
