// facts_text: what is known of curves as text.

#include "commands/curve/facts_text.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/text_columns.h"
#include "text/wrapped_text.h"

namespace nmk_curve {

namespace {

constexpr int decimals = 6;
constexpr std::size_t name_width = 16;
constexpr std::size_t most_points_shown = 8;
constexpr std::size_t indent_of_ends = 4;

std::string number_text(double value) {
    return std::isfinite(value) ? nmk_text::short_number(value, decimals) : "infinite";
}

/// A value for which a line has no room continues below itself.
void add_line(std::string& text, std::string_view name, const std::string& value) {
    std::string lines = nmk_text::wrapped(value, name_width, nmk_text::terminal_columns);
    text += lines.replace(0, name.size(), name);
}

std::string direction_text(const giUnitVec3& direction) {
    return number_text(direction.x) + " " + number_text(direction.y) + " " +
           number_text(direction.z);
}

void add_end(std::string& text, std::string_view name, const giPoint3& end,
             const giUnitVec3& tangent) {
    if (!end.is_set()) return;
    add_line(text, name,
             place_text(end) +
                 (tangent.is_set() ? ", tangent " + direction_text(tangent) : std::string()));
}

void add_circle(std::string& text, const CurveFacts& facts) {
    if (!facts.centre.is_set()) return;
    add_line(text, "Centre", place_text(facts.centre));
    add_line(text, "Normal", direction_text(facts.normal));
    add_line(text, "Radius, mm", number_text(facts.radius.value_or(0.0)));
    if (facts.sweep) add_line(text, "Sweep, degrees", number_text(*facts.sweep));
}

void add_points(std::string& text, const CurveFacts& facts) {
    const std::size_t count = facts.control_points.size();
    if (count == 0) return;
    if (facts.degree) {
        add_line(text, "Degree",
                 std::to_string(*facts.degree) + (facts.weights.empty() ? "" : ", rational"));
    }
    add_line(text, facts.degree ? "Control points" : "Points", std::to_string(count));
    for (std::size_t i = 0; i < count && i < most_points_shown; ++i) {
        add_line(text, "", place_text(facts.control_points[i]));
    }
    if (count > most_points_shown) add_line(text, "", "and so on");
}

std::string curve_list(const CurveFacts& facts) {
    std::string text;
    add_line(text, "Kind", std::string(kind_name(facts.kind)));
    add_line(text, "Length, mm", length_text(facts.length));
    if (!facts.box.is_empty()) {
        add_line(text, "Box, mm",
                 place_text(facts.box.min()) + " to " + place_text(facts.box.max()));
    }
    if (facts.through.is_set()) {
        add_line(text, "Through", place_text(facts.through));
        add_line(text, "Direction", direction_text(facts.start_tangent));
    }
    add_end(text, "Start", facts.start, facts.start_tangent);
    add_end(text, "End", facts.end, facts.end_tangent);
    add_line(text, "Closed", facts.is_closed ? "yes" : "no");
    if (facts.segments != 1) add_line(text, "Segments", std::to_string(facts.segments));
    add_circle(text, facts);
    add_points(text, facts);
    return text;
}

std::string end_cell(const giPoint3& end) { return end.is_set() ? place_text(end) : "none"; }

/// Its number, and what it is in its file.
std::string curve_cell(std::size_t number, const std::string& origin) {
    return std::to_string(number) + (origin.empty() ? "" : "  " + nmk_text::line_text(origin));
}

std::string ends_text(const CurveFacts& facts) {
    return "from " + end_cell(facts.start) + " to " + end_cell(facts.end);
}

using Cells = std::vector<std::string>;

std::vector<std::string> table_lines(const CurveReport& report, bool with_ends) {
    std::vector<Cells> rows = {{"", "kind", "length", "closed", "start", "end"}};
    for (std::size_t i = 0; i < report.curves.size(); ++i) {
        const CurveFacts& facts = report.curves[i];
        rows.push_back({curve_cell(i + 1, report.origins[i]), std::string(kind_name(facts.kind)),
                        length_text(facts.length), facts.is_closed ? "yes" : "no",
                        end_cell(facts.start), end_cell(facts.end)});
    }
    constexpr std::size_t cells_without_ends = 4;
    for (Cells& row : rows) {
        if (!with_ends) row.resize(cells_without_ends);
    }
    return nmk_text::column_lines(rows);
}

bool fit(const std::vector<std::string>& lines) {
    return std::ranges::all_of(lines, [](const std::string& line) {
        return nmk_text::character_count(line) <= nmk_text::terminal_columns;
    });
}

/// Ends for which the lines have no room follow below each line.
std::string curve_table(const CurveReport& report) {
    std::vector<std::string> lines = table_lines(report, true);
    const bool has_room = fit(lines);
    if (!has_room) lines = table_lines(report, false);
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += lines[i] + "\n";
        if (i > 0 && !has_room) {
            text += nmk_text::wrapped(ends_text(report.curves[i - 1]), indent_of_ends,
                                      nmk_text::terminal_columns);
        }
    }
    return text;
}

}  // namespace

std::string length_text(double length) { return number_text(length); }

std::string place_text(const giPoint3& point) {
    return number_text(point.x) + " " + number_text(point.y) + " " + number_text(point.z);
}

std::string report_text(const CurveReport& report) {
    const std::size_t count = report.curves.size();
    std::string text = nmk_text::line_text(report.name) + ": " + std::to_string(count) +
                       (count == 1 ? " curve" : " curves") + "\n\n";
    if (count == 1) {
        text += curve_list(report.curves[0]);
    } else if (count > 1) {
        text += curve_table(report);
    }
    for (const std::string& note : report.notes) {
        text += nmk_text::wrapped(nmk_text::line_text(note) + ".", 0, nmk_text::terminal_columns);
    }
    return text;
}

}  // namespace nmk_curve
