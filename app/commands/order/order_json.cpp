// order_json: the figures of an ordered job for programs, as one JSON object.

#include "commands/order/order_json.h"

#include "commands/order/sort_type_names.h"
#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

std::string number(double value) { return nmk_text::short_number(value, 6); }

std::string boolean(bool value) { return value ? "true" : "false"; }

std::string travel_json(const TravelFigures& figures, double rapid) {
    return "{\"travel\": " + number(figures.travel) +
           ", \"longest_move\": " + number(figures.longest) +
           ", \"seconds_euclidean\": " + number(rapid_seconds(figures.travel, rapid)) +
           ", \"seconds_chebyshev\": " + number(rapid_seconds(figures.per_axis, rapid)) + "}";
}

std::string row_json(const ToolFigures& row, double rapid) {
    return "{\"tool\": " + nmk_text::json_text(row.name) +
           ", \"diameter\": " + (row.diameter ? number(*row.diameter) : "null") +
           ", \"items\": " + std::to_string(row.items) +
           ", \"before\": " + travel_json(row.before, rapid) +
           ", \"after\": " + travel_json(row.after, rapid) +
           ", \"saved_percent\": " + number(saved_percent(row.before.travel, row.after.travel)) +
           "}";
}

template <class T, class ToJson>
std::string array_json(const std::vector<T>& values, ToJson to_json) {
    std::string text;
    for (const T& value : values) {
        text += (text.empty() ? "\n    " : ",\n    ") + to_json(value);
    }
    return text.empty() ? "[]" : "[" + text + "\n  ]";
}

std::string start_json(const giPoint3& start) {
    return "[" + number(start.x) + ", " + number(start.y) + ", " + number(start.z) + "]";
}

}  // namespace

std::string order_json(const OrderReport& report) {
    const double rapid = report.options.rapid;
    std::string text = "{\n  \"file\": " + nmk_text::json_text(report.options.file_name);
    text += ",\n  \"type\": " + nmk_text::json_text(sort_type_name(report.request.type));
    text += ",\n  \"across_tools\": " + boolean(report.request.across_tools);
    text += ",\n  \"start\": " + start_json(report.request.start);
    text += ",\n  \"tolerance\": " + number(report.request.tolerance);
    text += ",\n  \"rapid_mm_per_min\": " + number(rapid);
    text += ",\n  \"stopped\": " + boolean(report.stopped);
    text += ",\n  \"tool_changes\": {\"before\": " + std::to_string(report.tool_changes_before) +
            ", \"after\": " + std::to_string(report.tool_changes_after) + "}";
    text += ",\n  \"tools\": " + array_json(report.figures.tools, [&](const ToolFigures& row) {
                return row_json(row, rapid);
            });
    text += ",\n  \"total\": " + row_json(report.figures.total, rapid);
    text += ",\n  \"notes\": " + array_json(report.notes, [](const std::string& note) {
                return nmk_text::json_text(note);
            });
    return text + "\n}\n";
}

}  // namespace nmk_order
