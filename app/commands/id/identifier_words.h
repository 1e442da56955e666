// identifier_words.h: the four words of an identifier, and what they mean.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/json_document.h"

namespace nmk_id {

struct IdentifierWords {
    std::uint32_t hash = 0;  // of the address where it was made
    std::int32_t stamp = 0;  // as a rule the time in seconds since 1970
    std::int32_t serial = 0;
    std::uint32_t spare = 0;

    bool operator==(const IdentifierWords&) const = default;
};

/// The words of the text form, 32 lower-case hexadecimal digits; nothing for any other text.
std::optional<IdentifierWords> words_of_text(std::string_view text);

/// The text form.
std::string text_of_words(const IdentifierWords& words);

/// False where the stamp marks the identifier as invalid.
bool is_valid(const IdentifierWords& words);

/// The stamp as a time: "2026-11-22T10:15:30Z".
std::string time_of_stamp(std::int32_t stamp);

/// A line for each fact of an identifier.
std::string facts_as_text(const IdentifierWords& words);

/// The facts as members of an object: identifier, valid, hash, stamp, time, serial, spare. The time
/// of an invalid identifier is null.
void add_facts(nmk_text::Json& json, const IdentifierWords& words);

}  // namespace nmk_id
