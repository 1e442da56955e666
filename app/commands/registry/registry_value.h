// registry_value.h: a value of the registry: its type, and its data as bytes and as a text.
#pragma once

#include <winapi/registry.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "shell/option_values.h"
#include "text/result.h"

namespace nmk_registry {

struct Value {
    std::string name;  // empty: the default value of its key
    DWORD type = REG_SZ;
    std::string bytes;

    bool operator==(const Value&) const = default;
};

/// True for valid UTF-8, the empty text included.
bool is_utf8(std::string_view text);

/// The types that have a name, with what a person writes for them.
std::span<const nmk_shell::Choice<DWORD>> value_types();

/// "REG_SZ"; a number for a type without a name.
std::string type_name(DWORD type);

/// The content of a text (REG_SZ, REG_EXPAND_SZ), a number (REG_DWORD, REG_QWORD) or a list of
/// texts (REG_MULTI_SZ); empty if the value has another type, or bytes that are not of that form.
std::optional<std::string> text_of(const Value& value);
std::optional<std::uint64_t> number_of(const Value& value);
std::optional<std::vector<std::string>> texts_of(const Value& value);

/// The bytes for such a content.
std::string bytes_of_text(std::string_view text);
std::string bytes_of_number(DWORD type, std::uint64_t number);
std::string bytes_of_texts(const std::vector<std::string>& texts);

/// "48656c6c6f"; and the reverse, empty if the text is not pairs of hexadecimal digits.
std::string hex_text(std::string_view bytes);
std::optional<std::string> bytes_of_hex(std::string_view text);

/// The data as it is printed: a text in quotes, a number, texts with commas, else hexadecimal
/// digits.
std::string data_text(const Value& value);

/// The data without quotes, for `nmk registry get`; texts are lines.
std::string plain_data_text(const Value& value);

/// The bytes that the words of a command line mean for the type; an Error says what was expected.
nmk_text::Result<std::string> read_data(DWORD type, const std::vector<std::string>& words);

}  // namespace nmk_registry
