// json_writer.cpp: see json_writer.h.

#include "formats/json/json_writer.h"

#include <nlohmann/json.hpp>

#include "text/json_document.h"

namespace nmk_json {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

Json point_json(const giPoint3& point) { return Json::array({point.x, point.y, point.z}); }

Json cut_json(const nmk_job::JobItem& item, const nmk_job::JobCut& cut) {
    Json json = {{"source", cut.item},
                 {"reversed", cut.reversed},
                 {"start", point_json(nmk_job::entry_of(item, cut.reversed))}};
    if (item.end) {
        json["end"] = point_json(nmk_job::exit_of(item, cut.reversed));
    }
    return json;
}

Json tool_json(const nmk_job::JobTool& tool) {
    return {{"name", tool.name}, {"diameter", tool.diameter ? Json(*tool.diameter) : Json()}};
}

}  // namespace

std::string write_json(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order) {
    std::string text = nmk_text::json_opening(
        {{"schema", schema}, {"file", job.file_name}, {"units", "mm"}}, "tools");
    const char* between_tools = "\n  ";
    const auto add_run = [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
        text += between_tools + nmk_text::json_opening(tool_json(job.tools[tool]), "items");
        const char* between_items = "\n    ";
        for (const nmk_job::JobCut& cut : cuts) {
            text += between_items + nmk_text::json_line(cut_json(job.items[cut.item], cut));
            between_items = ",\n    ";
        }
        text += "]}";
        between_tools = ",\n  ";
    };
    nmk_job::each_tool_run(job, order, add_run);
    return text + "]}\n";
}

}  // namespace nmk_json
