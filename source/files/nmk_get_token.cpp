#include <nmktoolbox/files/nmk_get_token.h>

#include "files/wide_text.h"

#include <apsl/apCharacter.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

using nmk_files::wide_of;
using nmk_files::WideRanges;

namespace {

/// For each byte of the text, whether it belongs to a word.
std::vector<bool> word_bytes(const utString& text) {
    const std::wstring wide = wide_of(text);
    std::vector<bool> in_word;
    in_word.reserve(text.view().size());
    WideRanges characters(text.view());
    while (!characters.at_end()) {
        const wchar_t unit = wide[characters.unit()];
        characters.step();
        in_word.resize(characters.byte(), ap_is_alnum(unit) || unit == L',' || unit == L'.');
    }
    return in_word;
}

}  // namespace

int nmk_get_token(const utString& text, const utString& delimiters, int position, utString& token) {
    const std::string bytes(text.view());
    const std::string marks(delimiters.view());
    token = " ";
    if (bytes.empty() || position < 1) {
        return -1;
    }
    int before = std::min(position, static_cast<int>(bytes.size())) - 1;
    // Deliberate: index 0 is not tested.
    while (before >= 1 && marks.find(bytes[static_cast<std::size_t>(before)]) == marks.npos) {
        --before;
    }
    before = before >= 1 ? before : -1;
    const std::size_t begin = before >= 1 ? static_cast<std::size_t>(before) + 1 : 0;
    const std::size_t end = std::min(bytes.find_first_of(marks, begin), bytes.size());
    if (begin < end) {
        token = utString(bytes.substr(begin, end - begin));
    }
    return before;
}

int nmk_alphanumeric_token(const utString& text, int position, utString& token) {
    const utString source = text;  // `token` may be the text itself
    token = "";
    if (source.length() == 0 || position < 1) {
        return 0;
    }
    const std::vector<bool> in_word = word_bytes(source);
    const auto end = static_cast<std::size_t>(std::min(position, source.length()));
    std::size_t begin = end;  // behind the byte that is looked at next
    while (begin > 1 && in_word[begin - 1]) {
        --begin;
    }
    // Deliberate: index 0 is not tested.
    begin = begin == 1 ? 0 : begin;
    token = utString(source.view().substr(begin, end - begin));
    return begin < end ? 1 : 0;
}
