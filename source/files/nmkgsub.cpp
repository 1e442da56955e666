#include <nmktoolbox/files/nmkgsub.h>

#include "files/text_search.h"

#include <string>
#include <string_view>

using nmk_files::TextSearch;

int nmkgsub(utString& text, char from, char to) {
    if (from == to) {
        return 0;
    }
    int count = 0;
    std::string bytes(text.view());
    for (char& byte : bytes) {
        if (byte == from) {
            byte = to;
            ++count;
        }
    }
    if (count > 0) {
        text = utString(std::move(bytes));
    }
    return count;
}

int nmkgsub(utString& text, char from, const utString& to) {
    const char one_byte[] = {from, '\0'};
    return nmkgsub(text, utString(one_byte), to);
}

int nmkgsub(utString& text, const utString& from, const utString& to) {
    if (from.length() == 0) {
        return 0;
    }
    const TextSearch<char> search(from.view());
    const std::string_view bytes = text.view();
    std::string out;
    std::size_t kept = 0;  // up to here the text is in `out`
    int count = 0;
    for (std::size_t position = search.find(bytes, 0); position != search.npos;
         position = search.find(bytes, kept)) {
        if (count == 0) {
            out.reserve(bytes.size());
        }
        out += bytes.substr(kept, position - kept);
        out += to.view();
        kept = position + from.view().size();
        ++count;
    }
    if (count > 0) {
        out += bytes.substr(kept);
        text = utString(std::move(out));
    }
    return count;
}
