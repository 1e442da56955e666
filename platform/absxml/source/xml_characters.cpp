#include "xml_characters.h"

#include <apsl/apUtf8Length.h>

#include <algorithm>
#include <string>

namespace nmk_absxml {

namespace {

struct Range {
    std::uint32_t first, last;
};

// Productions 4 and 4a of XML 1.0, fifth edition, less what is ASCII.
constexpr Range name_starts[] = {
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
constexpr Range further_name_characters[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t count>
bool is_in(const Range (&ranges)[count], std::uint32_t code) {
    return std::any_of(ranges, ranges + count, [code](const Range& range) {
        return code >= range.first && code <= range.last;
    });
}

bool is_name_start(std::uint32_t code) {
    if (code >= 0x80) return is_in(name_starts, code);
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || code == '_' ||
           code == ':';
}

}  // namespace

Character character_at(const char* at) noexcept {
    const auto lead = static_cast<unsigned char>(*at);
    if (lead < 0x80) return {lead, lead == 0 ? 0U : 1U};
    const apUtf8Trails trails = ap_utf8_trails(lead);
    if (trails.count == 0) return {};
    std::uint32_t code = lead & (0x3FU >> trails.count);
    unsigned lowest = trails.lowest;
    unsigned highest = trails.highest;
    for (std::size_t i = 1; i <= trails.count; ++i) {
        const auto trail = static_cast<unsigned char>(at[i]);
        if (trail < lowest || trail > highest) return {};
        lowest = 0x80;
        highest = 0xBF;
        code = code << 6 | (trail & 0x3FU);
    }
    return {code, trails.count + 1};
}

std::size_t length_of_any_name(const char* at) noexcept {
    const Character first = character_at(at);
    if (first.length == 0 || !is_name_start(first.code)) return 0;
    const char* end = at + first.length;
    for (;;) {
        end = skip_to(end, ends_name);
        if (static_cast<unsigned char>(*end) < 0x80) break;
        const Character next = character_at(end);
        const bool belongs = next.length > 0 && (is_in(name_starts, next.code) ||
                                                 is_in(further_name_characters, next.code));
        if (!belongs) break;
        end += next.length;
    }
    return static_cast<std::size_t>(end - at);
}

bool is_name(std::string_view text) {
    const std::string ended(text);
    return !text.empty() && name_length(ended.c_str()) == text.size();
}

bool is_allowed_text(std::string_view text) {
    const std::string ended(text);
    const char* at = ended.c_str();
    while (at != ended.c_str() + ended.size()) {
        const Character next = character_at(at);
        if (next.length == 0 || !is_allowed(next.code)) return false;
        at += next.length;
    }
    return true;
}

}  // namespace nmk_absxml
