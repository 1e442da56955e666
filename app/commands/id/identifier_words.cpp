#include "commands/id/identifier_words.h"

#include <nmktoolbox/uniqueid/nmkUniqueId.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

namespace nmk_id {

namespace {

constexpr std::size_t digits_of_a_word = 8;
constexpr std::int32_t stamp_of_invalid_ones = 1;

std::uint32_t word_at(std::string_view text, std::size_t index) {
    const char* const first = text.data() + index * digits_of_a_word;
    std::uint32_t word = 0;
    std::from_chars(first, first + digits_of_a_word, word, 16);
    return word;
}

// As the library reads it, which makes an identifier of any text.
bool is_text_form(const std::string& text) {
    const std::unique_ptr<nmkUniqueId> identifier(nmkUniqueId::create(nmk_ptr_invalid));
    identifier->become(text.c_str());
    return identifier->hex_string().view() == text;
}

template <class... Values>
std::string formatted(const char* format, Values... values) {
    char text[256];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

}  // namespace

std::optional<IdentifierWords> words_of_text(std::string_view text) {
    if (!is_text_form(std::string(text))) return std::nullopt;
    return IdentifierWords{word_at(text, 0), static_cast<std::int32_t>(word_at(text, 1)),
                           static_cast<std::int32_t>(word_at(text, 2)), word_at(text, 3)};
}

std::string text_of_words(const IdentifierWords& words) {
    return formatted("%08x%08x%08x%08x", words.hash, static_cast<unsigned int>(words.stamp),
                     static_cast<unsigned int>(words.serial), words.spare);
}

bool is_valid(const IdentifierWords& words) { return words.stamp != stamp_of_invalid_ones; }

std::string time_of_stamp(std::int32_t stamp) {
    using namespace std::chrono;
    const sys_seconds time{seconds(stamp)};
    const sys_days day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    return formatted("%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                     static_cast<unsigned int>(date.month()), static_cast<unsigned int>(date.day()),
                     static_cast<int>(clock.hours().count()),
                     static_cast<int>(clock.minutes().count()),
                     static_cast<int>(clock.seconds().count()));
}

std::string facts_as_text(const IdentifierWords& words) {
    const std::string meaning =
        is_valid(words) ? time_of_stamp(words.stamp) : "marks an invalid identifier";
    return "identifier  " + text_of_words(words) + "\n" + "valid       " +
           (is_valid(words) ? "yes" : "no") + "\n" + formatted("hash        %08x\n", words.hash) +
           formatted("stamp       %d (%s)\n", words.stamp, meaning.c_str()) +
           formatted("serial      %d\n", words.serial) + formatted("spare       %u\n", words.spare);
}

void add_facts(nmk_text::Json& json, const IdentifierWords& words) {
    json["identifier"] = text_of_words(words);
    json["valid"] = is_valid(words);
    json["hash"] = words.hash;
    json["stamp"] = words.stamp;
    json["time"] = is_valid(words) ? nmk_text::Json(time_of_stamp(words.stamp)) : nmk_text::Json();
    json["serial"] = words.serial;
    json["spare"] = words.spare;
}

}  // namespace nmk_id
