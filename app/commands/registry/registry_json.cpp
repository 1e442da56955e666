// registry_json: a tree of keys as a JSON document.

#include "commands/registry/registry_json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>

#include "text/json_document.h"

namespace nmk_registry {

namespace {

using nmk_text::Json;

const std::string format_name = "nmk registry";
constexpr int schema = 1;
constexpr int max_levels = 512;
// Each level of keys is an array in an object; values are two more.
constexpr int max_nesting = 2 * max_levels + 4;

bool is_valid_text(const std::string& text) {
    return text_of({{}, REG_SZ, bytes_of_text(text)}).has_value();
}

void set_name(Json& json, const std::string& name) {
    if (is_valid_text(name)) {
        json["name"] = name;
    } else {
        json["name_bytes"] = hex_text(name);
    }
}

Json json_of(const Value& value) {
    Json json = Json::object();
    set_name(json, value.name);
    const std::string type = type_name(value.type);
    json["type"] = type.starts_with("REG_") ? Json(type) : Json(value.type);
    if (const auto text = text_of(value)) {
        json["text"] = *text;
    } else if (const auto number = number_of(value)) {
        json["number"] = *number;
    } else if (const auto texts = texts_of(value)) {
        json["texts"] = *texts;
    } else {
        json["bytes"] = hex_text(value.bytes);
    }
    return json;
}

void set_contents(Json& json, const Key& key) {
    json["values"] = Json::array();
    for (const Value& value : key.values) json["values"].push_back(json_of(value));
    json["keys"] = Json::array();
    for (const Key& each : key.keys) {
        Json below = Json::object();
        set_name(below, each.name);
        set_contents(below, each);
        json["keys"].push_back(std::move(below));
    }
}

// A part of a document, and where it is.
struct Part {
    const Json& json;
    std::string place;  // empty for the whole

    [[noreturn]] void refuse(const std::string& expected) const {
        throw nmk_text::Error{{}, 0, (place.empty() ? "" : place + ": ") + "expected " + expected};
    }
    Part member(const char* name) const {
        const auto found = json.is_object() ? json.find(name) : json.end();
        if (!json.is_object() || found == json.end()) {
            refuse("an object with the member \"" + std::string(name) + "\"");
        }
        return {*found, place.empty() ? name : place + "." + name};
    }
    bool has(const char* name) const { return json.is_object() && json.contains(name); }
    Part element(std::size_t index) const {
        return {json[index], place + "[" + std::to_string(index) + "]"};
    }
    std::string text() const {
        if (!json.is_string()) refuse("a text");
        auto text = json.get<std::string>();
        if (text.find('\0') != text.npos) refuse("a text without U+0000; \"bytes\" may have any");
        return text;
    }
    std::string hex() const {
        const auto bytes = bytes_of_hex(text());
        if (!bytes) refuse("pairs of hexadecimal digits");
        return *bytes;
    }
    std::size_t size_of_array() const {
        if (!json.is_array()) refuse("an array");
        return json.size();
    }
};

std::string name_in(const Part& part) {
    if (!part.has("name_bytes")) return part.member("name").text();
    std::string name = part.member("name_bytes").hex();
    if (name.find('\0') != name.npos) part.member("name_bytes").refuse("bytes that are not 00");
    return name;
}

std::uint64_t whole_number(const Part& part, std::uint64_t greatest) {
    if (!part.json.is_number_unsigned() || part.json.get<std::uint64_t>() > greatest) {
        part.refuse("a whole number from 0 to " + std::to_string(greatest));
    }
    return part.json.get<std::uint64_t>();
}

DWORD type_in(const Part& part) {
    if (part.json.is_string()) {
        for (const auto& choice : value_types()) {
            if (part.json.get<std::string>() == choice.name) return choice.value;
        }
    }
    return static_cast<DWORD>(whole_number(part, std::numeric_limits<DWORD>::max()));
}

std::string texts_in(const Part& part) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < part.size_of_array(); ++i) {
        texts.push_back(part.element(i).text());
        if (texts.back().empty()) part.element(i).refuse("a text that is not empty");
    }
    return bytes_of_texts(texts);
}

// The member that has the data must be the one that belongs to the type.
std::string data_in(const Part& part, DWORD type) {
    if (part.has("bytes")) return part.member("bytes").hex();
    switch (type) {
        case REG_SZ:
        case REG_EXPAND_SZ:
            return bytes_of_text(part.member("text").text());
        case REG_DWORD:
            return bytes_of_number(
                type, whole_number(part.member("number"), std::numeric_limits<DWORD>::max()));
        case REG_QWORD:
            return bytes_of_number(type, whole_number(part.member("number"),
                                                      std::numeric_limits<std::uint64_t>::max()));
        case REG_MULTI_SZ:
            return texts_in(part.member("texts"));
        default:
            return part.member("bytes").hex();
    }
}

Value value_in(const Part& part) {
    Value value;
    value.name = name_in(part);
    value.type = type_in(part.member("type"));
    value.bytes = data_in(part, value.type);
    return value;
}

Key key_in(const Part& part, std::string name, int level) {
    if (level > max_levels) part.refuse("at most 512 levels of keys");
    Key key{std::move(name), {}, {}};
    const Part values = part.member("values");
    for (std::size_t i = 0; i < values.size_of_array(); ++i) {
        key.values.push_back(value_in(values.element(i)));
    }
    const Part keys = part.member("keys");
    for (std::size_t i = 0; i < keys.size_of_array(); ++i) {
        const Part below = keys.element(i);
        std::string name_of_key = name_in(below);
        if (name_of_key.empty() || name_of_key.find('\\') != name_of_key.npos) {
            below.refuse("a name that is not empty and has no backslash");
        }
        key.keys.push_back(key_in(below, std::move(name_of_key), level + 1));
    }
    return key;
}

// Deep nesting takes far more memory than text, so it is refused while it is read.
Json parsed(std::string_view text) {
    const auto limit = [](int depth, Json::parse_event_t, Json&) {
        if (depth > max_nesting) {
            throw nmk_text::Error{{}, 0, "nested too deep; expected at most 512 levels of keys"};
        }
        return true;
    };
    try {
        return Json::parse(text, limit);
    } catch (const Json::parse_error& error) {
        const auto end =
            text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
        const auto line = static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
        throw nmk_text::Error{{}, line, "not a JSON document; expected an export of nmk registry"};
    } catch (const Json::exception&) {
        throw nmk_text::Error{{}, 0, "a number is too large; expected an export of nmk registry"};
    }
}

Document document_of(std::string_view text) {
    const Json json = parsed(text);
    const Part part{json, {}};
    if (!part.has("format") || part.json["format"] != format_name) {
        part.refuse("an export of nmk registry, with \"format\": \"nmk registry\"");
    }
    if (part.member("schema").json != schema) part.member("schema").refuse("1");
    return {part.member("path").text(), key_in(part, {}, 0)};
}

}  // namespace

std::string document_json(const Document& document) {
    Json json = Json::object();
    json["schema"] = schema;
    json["format"] = format_name;
    json["path"] = document.path;
    set_contents(json, document.tree);
    return nmk_text::json_document(json);
}

nmk_text::Result<Document> read_document(const std::string& file_name, std::string_view text) {
    return nmk_text::value_or_error(file_name, [&] { return document_of(text); });
}

}  // namespace nmk_registry
