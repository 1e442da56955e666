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

void add_item(std::string& text, const nmk_job::JobItem& item, const nmk_job::JobCut& cut) {
    text += R"({"source": )" + std::to_string(cut.item);
    text += cut.reversed ? R"(, "reversed": true)" : R"(, "reversed": false)";
    text += R"(, "start": )" + point_array(nmk_job::entry_of(item, cut.reversed));
    if (item.end) {
        text += R"(, "end": )" + point_array(nmk_job::exit_of(item, cut.reversed));
    }
    text += "}";
}

void add_run(std::string& text, const nmk_job::MachiningJob& job, const nmk_job::JobTool& tool,
             std::span<const nmk_job::JobCut> cuts) {
    text += R"({"name": )" + nmk_text::json_text(tool.name) + R"(, "diameter": )" +
            (tool.diameter ? nmk_text::exact_number(*tool.diameter) : "null") + R"(, "items": [)";
    const char* separator = "\n";
    for (const nmk_job::JobCut& cut : cuts) {
        text += separator;
        text += "    ";
        add_item(text, job.items[cut.item], cut);
        separator = ",\n";
    }
    text += "]}";
}

}  // namespace

std::string write_json(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order) {
    std::string text =
        R"({"file": )" + nmk_text::json_text(job.file_name) + R"(, "units": "mm", "tools": [)";
    const char* separator = "\n  ";
    nmk_job::each_tool_run(job, order,
                           [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
                               text += separator;
                               add_run(text, job, job.tools[tool], cuts);
                               separator = ",\n  ";
                           });
    return text + "]}\n";
}

}  // namespace nmk_json
