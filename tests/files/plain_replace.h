// plain_replace.h: replacement one character at a time, by the definition.
#pragma once

#include <string>

template <class Char>
std::basic_string<Char> plain_replace(const std::basic_string<Char>& text,
                                      const std::basic_string<Char>& from,
                                      const std::basic_string<Char>& to, int& count) {
    std::basic_string<Char> out;
    count = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (!from.empty() && text.compare(i, from.size(), from) == 0) {
            out += to;
            i += from.size();
            ++count;
        } else {
            out += text[i++];
        }
    }
    return out;
}
