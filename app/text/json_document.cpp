// json_document: how every JSON document of the tool is laid out and how its numbers are written.

#include "text/json_document.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "text/number_format.h"

namespace nmk_text {

namespace {

constexpr std::size_t max_columns = 80;
constexpr std::size_t indent_step = 2;

std::string scalar_text(const Json& value) {
    if (!value.is_number_float()) {
        return value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    const double number = value.get<double>();
    return std::isfinite(number) ? exact_number(number == 0.0 ? 0.0 : number) : "null";
}

std::string key_text(const std::string& key) { return scalar_text(Json(key)) + ": "; }

/// Appends the value, whose first line begins behind `column` characters; a comma may follow it.
void append(std::string& text, const Json& value, std::size_t indent, std::size_t column) {
    const std::string line = json_line(value);
    if (!value.is_structured() || value.empty() || column + line.size() + 1 <= max_columns) {
        text += line;
        return;
    }
    const std::string break_inside = "\n" + std::string(indent + indent_step, ' ');
    const char* separator = "";
    text += value.is_object() ? '{' : '[';
    for (const auto& [key, member] : value.items()) {
        const std::string name = value.is_object() ? key_text(key) : std::string();
        text += separator + break_inside + name;
        append(text, member, indent + indent_step, indent + indent_step + name.size());
        separator = ",";
    }
    text += "\n" + std::string(indent, ' ');
    text += value.is_object() ? '}' : ']';
}

}  // namespace

std::string json_document(const Json& value) {
    std::string text;
    append(text, value, 0, 0);
    return text + "\n";
}

std::string json_line(const Json& value) {
    if (!value.is_structured()) {
        return scalar_text(value);
    }
    std::string text;
    for (const auto& [key, member] : value.items()) {
        text += text.empty() ? "" : ", ";
        text += (value.is_object() ? key_text(key) : std::string()) + json_line(member);
    }
    return value.is_object() ? "{" + text + "}" : "[" + text + "]";
}

std::string json_opening(const Json& head, std::string_view array_name) {
    std::string text = json_line(head);
    text.pop_back();
    return text + ", " + key_text(std::string(array_name)) + "[";
}

}  // namespace nmk_text
