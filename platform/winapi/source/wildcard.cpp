#include "wildcard.h"

#include <cstddef>

namespace {

std::size_t after_one_character(std::string_view name, std::size_t at) {
    const auto byte_at = [name](std::size_t i) { return static_cast<unsigned char>(name[i]); };
    const bool leads = byte_at(at) >= 0xC0;
    ++at;
    while (leads && at < name.size() && (byte_at(at) & 0xC0) == 0x80) {
        ++at;
    }
    return at;
}

}  // namespace

namespace winapi {

bool has_wildcard(std::string_view text) { return text.find_first_of("*?") != text.npos; }

bool fits_wildcards(std::string_view name, std::string_view pattern) {
    // Only the last star is ever tried again: an earlier one could not do better.
    std::size_t in_name = 0, in_pattern = 0;
    std::size_t star = pattern.npos, star_reached = 0;
    while (in_name < name.size()) {
        if (in_pattern < pattern.size() && pattern[in_pattern] == '*') {
            star = in_pattern++;
            star_reached = in_name;
        } else if (in_pattern < pattern.size() && pattern[in_pattern] == '?') {
            in_name = after_one_character(name, in_name);
            ++in_pattern;
        } else if (in_pattern < pattern.size() && pattern[in_pattern] == name[in_name]) {
            ++in_name;
            ++in_pattern;
        } else if (star != pattern.npos) {
            in_name = ++star_reached;
            in_pattern = star + 1;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in_pattern) == pattern.npos;
}

}  // namespace winapi
