// plain_tokens.h: the rules of nmktokens one step at a time, on the wide text.
#pragma once

#include <string>
#include <vector>

inline std::vector<std::wstring> plain_tokens(const std::wstring& text,
                                              const std::wstring& delimiters) {
    std::vector<std::wstring> tokens;
    const auto is_delimiter = [&](wchar_t c) { return delimiters.find(c) != std::wstring::npos; };
    std::size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && is_delimiter(text[i])) {
            ++i;
        }
        wchar_t mark = 0;
        if (i < text.size() && (text[i] == L'\'' || text[i] == L'"')) {
            mark = text[i++];
        }
        std::wstring token;
        bool closed = false;
        for (; i < text.size() && !closed; ++i) {
            if (is_delimiter(text[i])) {
                closed = mark == 0 || (token.size() > 1 && token.back() == mark);
                if (closed) {
                    break;
                }
            }
            token += text[i];
        }
        const bool at_end = i == text.size();
        if (mark != 0 && !token.empty() && token.back() == mark && (closed || at_end)) {
            token.pop_back();
        }
        tokens.push_back(token);
    }
    return tokens;
}
