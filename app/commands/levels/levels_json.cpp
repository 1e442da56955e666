// levels_json: version levels as one JSON object.

#include <nlohmann/json.hpp>
#include <ostream>

#include "commands/levels/print_levels.h"
#include "text/json_document.h"

namespace nmk_levels {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

Json setting_json(int level) { return level < 0 ? Json() : Json(level); }

Json level_json(const nmkVersion& level) {
    return {{"name", level.get_name()},
            {"state", level.get_current()},
            {"level", level.get_level()},
            {"previous", setting_json(level.get_previous_level())},
            {"default", setting_json(level.get_default_level())},
            {"preview", setting_json(level.get_preview_level())},
            {"prerelease", level.get_prerelease() != 0},
            {"description", level.get_description()},
            {"documentation", level.get_link()}};
}

}  // namespace

void print_levels_as_json(const std::vector<const nmkVersion*>& levels, std::ostream& out) {
    Json rows = Json::array();
    for (const nmkVersion* level : levels) {
        rows.push_back(level_json(*level));
    }
    out << nmk_text::json_document({{"schema", schema}, {"levels", std::move(rows)}});
}

}  // namespace nmk_levels
