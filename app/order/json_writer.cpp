// json_writer.cpp: see json_writer.h.

#include "order/json_writer.h"

#include <algorithm>

#include "order/text_number.h"

namespace nmk_app {

namespace {

constexpr std::string_view replacement = "\\ufffd";

/// The length of the UTF-8 sequence at the front of the text; 0 where none stands there.
std::size_t utf8_length(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xc2 ? 0
                               : first < 0xe0 ? 2
                               : first < 0xf0 ? 3
                               : first < 0xf5 ? 4
                                              : 0;
    if (length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0U) != 0x80U) {
            return 0;
        }
    }
    const unsigned second = length > 1 ? byte(1) : 0;
    const bool is_wrong = (first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ||
                          (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f);
    return is_wrong ? 0 : length;
}

std::string escaped(char letter) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == '"' || letter == '\\') {
        return std::string("\\") + letter;
    }
    if (byte >= 0x20) {
        return std::string(1, letter);
    }
    return std::string("\\u00") + digits[byte >> 4U] + digits[byte & 15U];
}

std::string point_array(const giPoint3& point) {
    return "[" + number_text(point.x) + ", " + number_text(point.y) + ", " + number_text(point.z) +
           "]";
}

void add_item(std::string& text, const JobItem& item) {
    text += R"({"source": )" + std::to_string(item.source_index);
    text += item.reversed ? R"(, "reversed": true)" : R"(, "reversed": false)";
    text += R"(, "start": )" + point_array(item.entry());
    if (item.end) {
        text += R"(, "end": )" + point_array(item.exit());
    }
    text += "}";
}

void add_tool(std::string& text, const JobTool& tool) {
    text += R"({"name": )" + json_string(tool.name) + R"(, "diameter": )" +
            (tool.diameter ? number_text(*tool.diameter) : "null") + R"(, "items": [)";
    const char* separator = "\n";
    for (const JobItem& item : tool.items) {
        text += separator;
        text += "    ";
        add_item(text, item);
        separator = ",\n";
    }
    text += "]}";
}

}  // namespace

std::string json_string(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            result += replacement;
        } else if (length == 1) {
            result += escaped(text.front());
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result + "\"";
}

std::string write_json(const MachiningJob& ordered) {
    std::string text =
        R"({"file": )" + json_string(ordered.file_name) + R"(, "units": "mm", "tools": [)";
    const char* separator = "\n  ";
    for (const JobTool& tool : ordered.tools) {
        text += separator;
        add_tool(text, tool);
        separator = ",\n  ";
    }
    return text + "]}\n";
}

}  // namespace nmk_app
