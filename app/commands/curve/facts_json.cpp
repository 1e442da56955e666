// facts_json: points and curves as JSON.

#include "commands/curve/facts_json.h"

#include <cmath>

#include "commands/curve/facts_text.h"

namespace nmk_curve {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

template <class Value>
Json json_or_null(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

Json box_json(const giBox3& box) {
    if (box.is_empty()) return nullptr;
    return {{"min", json_of(box.min())}, {"max", json_of(box.max())}};
}

}  // namespace

Json json_of(const giPoint3& point) {
    return point.is_set() ? Json::array({point.x, point.y, point.z}) : Json();
}

Json json_of(const giUnitVec3& direction) {
    return direction.is_set() ? Json::array({direction.x, direction.y, direction.z}) : Json();
}

Json json_of(const std::vector<giPoint3>& points) {
    Json list = Json::array();
    for (const giPoint3& point : points) list.push_back(json_of(point));
    return list;
}

Json json_of(const CurveFacts& facts) {
    return {{"kind", kind_key(facts.kind)},
            {"length", facts.length},
            {"box", box_json(facts.box)},
            {"closed", facts.is_closed},
            {"segments", facts.segments},
            {"start", json_of(facts.start)},
            {"end", json_of(facts.end)},
            {"start_tangent", json_of(facts.start_tangent)},
            {"end_tangent", json_of(facts.end_tangent)},
            {"through", json_of(facts.through)},
            {"centre", json_of(facts.centre)},
            {"normal", json_of(facts.normal)},
            {"radius", json_or_null(facts.radius)},
            {"sweep_in_degrees", json_or_null(facts.sweep)},
            {"degree", json_or_null(facts.degree)},
            {"control_points", json_of(facts.control_points)},
            {"weights", facts.weights},
            {"knots", facts.knots}};
}

std::string report_json(const CurveReport& report) {
    Json curves = Json::array();
    for (std::size_t i = 0; i < report.curves.size(); ++i) {
        Json curve = json_of(report.curves[i]);
        curve["origin"] = report.origins[i].empty() ? Json() : Json(report.origins[i]);
        curves.push_back(std::move(curve));
    }
    return nmk_text::json_document({{"schema", schema},
                                    {"name", report.name},
                                    {"curves", std::move(curves)},
                                    {"points", json_of(report.samples)},
                                    {"notes", report.notes}});
}

}  // namespace nmk_curve
