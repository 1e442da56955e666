// json_writer.cpp: see json_writer.h.

#include "formats/json/json_writer.h"

#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_json {

namespace {

std::string point_array(const giPoint3& point) {
    return "[" + nmk_text::exact_number(point.x) + ", " + nmk_text::exact_number(point.y) + ", " +
           nmk_text::exact_number(point.z) + "]";
}

void add_item(std::string& text, const nmk_job::JobItem& item) {
    text += R"({"source": )" + std::to_string(item.source_index);
    text += item.reversed ? R"(, "reversed": true)" : R"(, "reversed": false)";
    text += R"(, "start": )" + point_array(item.entry());
    if (item.end) {
        text += R"(, "end": )" + point_array(item.exit());
    }
    text += "}";
}

void add_tool(std::string& text, const nmk_job::JobTool& tool) {
    text += R"({"name": )" + nmk_text::json_text(tool.name) + R"(, "diameter": )" +
            (tool.diameter ? nmk_text::exact_number(*tool.diameter) : "null") + R"(, "items": [)";
    const char* separator = "\n";
    for (const nmk_job::JobItem& item : tool.items) {
        text += separator;
        text += "    ";
        add_item(text, item);
        separator = ",\n";
    }
    text += "]}";
}

}  // namespace

std::string write_json(const nmk_job::MachiningJob& ordered) {
    std::string text =
        R"({"file": )" + nmk_text::json_text(ordered.file_name) + R"(, "units": "mm", "tools": [)";
    const char* separator = "\n  ";
    for (const nmk_job::JobTool& tool : ordered.tools) {
        text += separator;
        add_tool(text, tool);
        separator = ",\n  ";
    }
    return text + "]}\n";
}

}  // namespace nmk_json
