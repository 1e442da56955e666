// order_table: the figures of an ordered job as a table for a person.

#include "commands/order/order_table.h"

#include <algorithm>

#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

std::vector<std::string> row_cells(const ToolFigures& row, double rapid) {
    const TravelFigures& after = row.after;
    return {nmk_text::line_text(row.name),
            row.diameter ? nmk_text::fixed_number(*row.diameter, 3) : "",
            std::to_string(row.items),
            nmk_text::fixed_number(row.before.travel, 1),
            nmk_text::fixed_number(after.travel, 1),
            nmk_text::fixed_number(saved_percent(row.before.travel, after.travel), 1),
            nmk_text::fixed_number(after.longest, 1),
            nmk_text::fixed_number(rapid_seconds(after.travel, rapid), 1),
            nmk_text::fixed_number(rapid_seconds(after.per_axis, rapid), 1)};
}

std::vector<std::size_t> column_widths(const FigureCells& cells) {
    std::vector<std::size_t> widths(cells.headings.size(), 0);
    const auto widen = [&](const std::vector<std::string>& row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    };
    widen(cells.headings);
    widen(cells.units);
    std::for_each(cells.rows.begin(), cells.rows.end(), widen);
    return widths;
}

/// The first column to the left, the others to the right, two blanks between.
std::string padded_line(const std::vector<std::string>& row,
                        const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string padding(widths[i] - row[i].size(), ' ');
        line += i == 0 ? row[i] + padding : "  " + padding + row[i];
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

}  // namespace

FigureCells figure_cells(const OrderReport& report) {
    FigureCells cells;
    cells.headings = {"tool",  "diameter", "items",     "travel before", "travel after",
                      "saved", "longest",  "Euclidean", "Chebyshev"};
    cells.units = {"", "mm", "", "mm", "mm", "%", "mm", "s", "s"};
    for (const ToolFigures& row : report.figures.tools) {
        cells.rows.push_back(row_cells(row, report.options.rapid));
    }
    cells.rows.push_back(row_cells(report.figures.total, report.options.rapid));
    return cells;
}

std::string order_table(const OrderReport& report) {
    const FigureCells cells = figure_cells(report);
    const std::vector<std::size_t> widths = column_widths(cells);
    std::string text =
        nmk_text::line_text(report.options.file_name) + ": " + report_summary(report) + "\n\n";
    const std::string headings = padded_line(cells.headings, widths);
    text += headings + padded_line(cells.units, widths);
    for (std::size_t i = 0; i < cells.rows.size(); ++i) {
        if (i + 1 == cells.rows.size()) {
            text += std::string(headings.size() - 1, '-') + "\n";
        }
        text += padded_line(cells.rows[i], widths);
    }
    text += "\n" + rapid_summary(report) + "\n";
    if (report.request.across_tools) {
        text += "Tool changes: " + std::to_string(report.tool_changes_before) + " before, " +
                std::to_string(report.tool_changes_after) + " after.\n";
    }
    for (const std::string& note : report.notes) {
        text += nmk_text::line_text(note) + ".\n";
    }
    return text;
}

}  // namespace nmk_order
