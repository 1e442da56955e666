// files_table: the figures of several ordered files as one table.

#include "commands/order/files_table.h"

#include <algorithm>
#include <cstddef>

#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/text_columns.h"
#include "text/wrapped_text.h"

namespace nmk_order {

namespace {

using Cells = std::vector<std::string>;

Cells row_cells(const std::string& name, const std::string& tools, const ToolFigures& figures,
                nmkTravelMeasure kind) {
    return {name,
            tools,
            std::to_string(figures.items),
            nmk_text::fixed_number(shown_travel(figures.before, kind), 1),
            nmk_text::fixed_number(shown_travel(figures.after, kind), 1),
            nmk_text::fixed_number(saved_percent(figures, kind), 1),
            nmk_text::fixed_number(figures.after.seconds, 1)};
}

void add_to(ToolFigures& sum, const ToolFigures& file) {
    sum.items += file.items;
    for (const auto part : {&ToolFigures::before, &ToolFigures::after}) {
        (sum.*part).travel += (file.*part).travel;
        (sum.*part).per_axis += (file.*part).per_axis;
        (sum.*part).seconds += (file.*part).seconds;
    }
}

bool has_job_time(const std::vector<OrderReport>& reports) {
    return std::any_of(reports.begin(), reports.end(),
                       [](const OrderReport& report) { return report.job_times.has_value(); });
}

/// A column with the time of each job after ordering, and their sum.
void add_job_times(std::vector<Cells>& rows, const std::vector<OrderReport>& reports) {
    rows[0].emplace_back("job");
    rows[1].emplace_back("h:mm:ss");
    double sum = 0.0;
    for (std::size_t i = 0; i < reports.size(); ++i) {
        const double seconds = reports[i].job_times ? reports[i].job_times->after.total() : 0.0;
        rows[i + 2].push_back(clock_text(seconds));
        sum += seconds;
    }
    rows.back().push_back(clock_text(sum));
}

std::vector<Cells> rows_of(const std::vector<OrderReport>& reports) {
    std::vector<Cells> rows = {{"file", "tools", "items", "before", "after", "saved", "rapids"},
                               {"", "", "", "mm", "mm", "%", "s"}};
    ToolFigures sum;
    nmkTravelMeasure kind = nmkTravelMeasure::length;  // the same for all files
    for (const OrderReport& report : reports) {
        const ToolFigures& total = report.figures.total;
        rows.push_back(row_cells(nmk_text::line_text(report.options.file_name),
                                 std::to_string(report.figures.tools.size()), total,
                                 report.request.measure.kind));
        add_to(sum, total);
        kind = report.request.measure.kind;
    }
    rows.push_back(row_cells("total", "", sum, kind));
    if (has_job_time(reports)) {
        add_job_times(rows, reports);
    }
    return rows;
}

/// How many characters a name may have beside the figures of its row.
std::size_t room_for_names(std::vector<Cells> rows) {
    const std::size_t least = rows.back()[0].size();
    for (Cells& row : rows) {
        row[0].clear();
    }
    const std::size_t figures = nmk_text::character_count(nmk_text::column_lines(rows)[0]);
    return std::max(least,
                    nmk_text::terminal_columns - std::min(nmk_text::terminal_columns, figures));
}

/// Takes the names for which a row has no room out of the rows, as lines of their own above them.
std::vector<std::string> take_long_names(std::vector<Cells>& rows) {
    const std::size_t room = room_for_names(rows);
    std::vector<std::string> above(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (nmk_text::character_count(rows[i][0]) > room) {
            above[i] = rows[i][0] + "\n";
            rows[i][0].clear();
        }
    }
    return above;
}

}  // namespace

std::string files_table(const std::vector<OrderReport>& reports) {
    std::vector<Cells> rows = rows_of(reports);
    const std::vector<std::string> above = take_long_names(rows);
    const std::vector<std::string> lines = nmk_text::column_lines(rows);
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i + 1 == lines.size()) {
            text += std::string(nmk_text::character_count(lines[0]), '-') + "\n";
        }
        text += above[i] + lines[i] + "\n";
    }
    for (const OrderReport& report : reports) {
        for (const std::string& note : report.notes) {
            text +=
                nmk_text::wrapped(nmk_text::line_text(report.options.file_name + ": " + note) + ".",
                                  0, nmk_text::terminal_columns);
        }
    }
    return text;
}

}  // namespace nmk_order
