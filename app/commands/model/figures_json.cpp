// figures_json: the figures of models as one JSON object.

#include <nlohmann/json.hpp>

#include "commands/model/figures_text.h"
#include "text/json_document.h"

namespace nmk_model {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

Json point_json(const giPoint3& point, double unit) {
    return Json::array({point.x / unit, point.y / unit, point.z / unit});
}

/// The corners of the box in a unit of so many millimetres; null for an empty box.
Json box_json(const giBox3& box, double unit) {
    if (box.is_empty()) return nullptr;
    return {{"min", point_json(box.min(), unit)}, {"max", point_json(box.max(), unit)}};
}

Json model_json(const ModelFigures& figures) {
    Json json = {{"file", figures.name},
                 {"format", format_key(figures.format)},
                 {"file_units", units_name(figures.file_units)},
                 {"blocks", figures.blocks},
                 {"triangles", figures.triangles},
                 {"invalid_triangles", figures.invalid_triangles},
                 {"nodes", figures.stored_nodes},
                 {"welded_nodes", figures.welded_nodes},
                 {"box", box_json(figures.box, 1.0)},
                 {"box_in_inches", box_json(figures.box, mm_per_inch)},
                 {"area", figures.area},
                 {"closed", figures.is_closed()},
                 {"volume", nullptr},
                 {"free_edges", figures.free_edges},
                 {"edges_of_more_than_two", figures.crowded_edges},
                 {"opposed_edges", figures.opposed_edges},
                 {"degenerate_triangles", figures.degenerate_triangles},
                 {"shells", figures.shells}};
    if (figures.volume) json["volume"] = *figures.volume;
    return json;
}

}  // namespace

std::string figures_json(const std::vector<ModelFigures>& all) {
    Json files = Json::array();
    for (const ModelFigures& figures : all) files.push_back(model_json(figures));
    return nmk_text::json_document({{"schema", schema}, {"files", std::move(files)}});
}

}  // namespace nmk_model
