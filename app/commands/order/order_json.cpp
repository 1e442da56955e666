// order_json: the figures of an ordered job for programs, as one JSON object.

#include "commands/order/order_json.h"

#include <nlohmann/json.hpp>

#include "commands/order/sort_type_names.h"
#include "text/json_document.h"

namespace nmk_order {

namespace {

using nmk_text::Json;

constexpr int schema = 3;

Json place_json(const std::optional<giPoint3>& place) {
    return place ? Json::array({place->x, place->y, place->z}) : Json();
}

Json axes_json(const nmkTravelAxes& axes) { return Json::array({axes.x, axes.y, axes.z}); }

Json travel_json(const TravelFigures& figures) {
    return {{"travel", figures.travel},        {"travel_chebyshev", figures.per_axis},
            {"start_leg", figures.start_leg},  {"end_leg", figures.end_leg},
            {"longest_move", figures.longest}, {"seconds", figures.seconds}};
}

Json row_json(const ToolFigures& row, nmkTravelMeasure kind) {
    return {{"tool", row.name},
            {"diameter", row.diameter ? Json(*row.diameter) : Json()},
            {"items", row.items},
            {"before", travel_json(row.before)},
            {"after", travel_json(row.after)},
            {"saved_percent", saved_percent(row, kind)}};
}

Json tools_json(const OrderReport& report) {
    Json rows = Json::array();
    for (const ToolFigures& row : report.figures.tools) {
        rows.push_back(row_json(row, report.request.measure.kind));
    }
    return rows;
}

Json bends_json(const OrderReport& report) {
    Json moves = Json::array();
    for (const BentMove& move : report.bent_moves) {
        Json places = Json::array();
        for (const giPoint3& place : move.places) {
            places.push_back(place_json(place));
        }
        moves.push_back({{"tool", report.figures.tools[move.run].name}, {"places", places}});
    }
    return moves;
}

Json job_time_json(const JobTime& time) {
    return {
        {"rapids", time.rapids},     {"plunges", time.plunges},           {"slots", time.slots},
        {"retracts", time.retracts}, {"tool_changes", time.tool_changes}, {"total", time.total()}};
}

Json job_times_json(const std::optional<JobTimes>& times) {
    return times ? Json{{"before", job_time_json(times->before)},
                        {"after", job_time_json(times->after)}}
                 : Json();
}

Json document_of(const OrderReport& report) {
    const OrderRequest& request = report.request;
    return {{"schema", schema},
            {"file", report.options.file_name},
            {"file_units", report.file_units == nmk_job::JobUnits::inches ? "inch" : "mm"},
            {"type", sort_type_name(request.type)},
            {"across_tools", request.across_tools},
            {"merge_tools", report.options.merge_tools},
            {"start", place_json(request.ends.start)},
            {"end", place_json(request.ends.end)},
            {"closed", request.ends.is_closed},
            {"avoid", report.options.avoid_file.empty() ? Json() : Json(report.options.avoid_file)},
            {"tolerance", request.tolerance},
            {"measure", measure_name(request.measure.kind)},
            {"rapid_mm_per_min", axes_json(request.measure.rapids.rate)},
            {"acceleration_mm_per_s2", axes_json(request.measure.rapids.acceleration)},
            {"job_seconds", job_times_json(report.job_times)},
            {"stopped", report.stopped},
            {"tool_changes",
             {{"before", report.tool_changes_before}, {"after", report.tool_changes_after}}},
            {"tools", tools_json(report)},
            {"total", row_json(report.figures.total, request.measure.kind)},
            {"bent_moves", bends_json(report)},
            {"left_out", report.left_out},
            {"notes", report.notes}};
}

}  // namespace

std::string order_json(const OrderReport& report) {
    return nmk_text::json_document(document_of(report));
}

std::string files_json(const std::vector<OrderReport>& reports) {
    Json files = Json::array();
    for (const OrderReport& report : reports) {
        files.push_back(document_of(report));
    }
    return nmk_text::json_document({{"schema", schema}, {"files", files}});
}

}  // namespace nmk_order
