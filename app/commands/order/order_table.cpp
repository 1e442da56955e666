// order_table: the figures of an ordered job as a table for a person.

#include "commands/order/order_table.h"

#include <algorithm>

#include "commands/order/length_texts.h"
#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/wrapped_text.h"

namespace nmk_order {

namespace {

// A longer name is cut in the table, which then fits a terminal.
constexpr std::size_t max_name_length = 7;

std::vector<std::string> row_cells(const ToolFigures& row, const OrderReport& report) {
    const LengthTexts text(report.file_units);
    const TravelFigures& after = row.after;
    const nmkTravelMeasure kind = report.request.measure.kind;
    return {nmk_text::line_text(row.name),
            row.diameter ? text.diameter(*row.diameter) : "",
            std::to_string(row.items),
            text.travel(shown_travel(row.before, kind)),
            text.travel(shown_travel(after, kind)),
            nmk_text::fixed_number(saved_percent(row, kind), 1),
            text.travel(after.longest),
            nmk_text::fixed_number(row.before.seconds, 1),
            nmk_text::fixed_number(after.seconds, 1)};
}

/// The cells of the text table: shorter headings, and names of limited length.
FigureCells narrow_cells(const OrderReport& report) {
    FigureCells cells = figure_cells(report);
    cells.headings[3] = "before";
    cells.headings[4] = "after";
    cells.headings[8] = "after";
    for (std::vector<std::string>& row : cells.rows) {
        row[0] = nmk_text::shortened(row[0], max_name_length);
    }
    return cells;
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

/// The name of the file and the summary, on one line if they fit.
std::string heading_lines(const OrderReport& report) {
    const std::string name = nmk_text::line_text(report.options.file_name) + ":";
    const std::string summary = report_summary(report);
    return name.size() + 1 + summary.size() <= nmk_text::terminal_columns
               ? name + " " + summary + "\n"
               : name + "\n" + nmk_text::wrapped(summary, 2, nmk_text::terminal_columns);
}

}  // namespace

FigureCells figure_cells(const OrderReport& report) {
    FigureCells cells;
    cells.headings = {"tool",  "diameter", "items",       "travel before", "travel after",
                      "saved", "longest",  "time before", "time after"};
    const std::string unit = length_unit(report.file_units);
    cells.units = {"", unit, "", unit, unit, "%", unit, "s", "s"};
    for (const ToolFigures& row : report.figures.tools) {
        cells.rows.push_back(row_cells(row, report));
    }
    cells.rows.push_back(row_cells(report.figures.total, report));
    return cells;
}

std::string order_table(const OrderReport& report) {
    const FigureCells cells = narrow_cells(report);
    const std::vector<std::size_t> widths = column_widths(cells);
    std::string text = heading_lines(report) + "\n";
    const std::string headings = padded_line(cells.headings, widths);
    text += headings + padded_line(cells.units, widths);
    for (std::size_t i = 0; i < cells.rows.size(); ++i) {
        if (i + 1 == cells.rows.size()) {
            text += std::string(headings.size() - 1, '-') + "\n";
        }
        text += padded_line(cells.rows[i], widths);
    }
    text += "\n" + nmk_text::wrapped(rapid_summary(report), 0, nmk_text::terminal_columns);
    if (report.job_times) {
        text += nmk_text::wrapped(job_time_text(*report.job_times), 0, nmk_text::terminal_columns);
    }
    if (report.request.across_tools) {
        text += "Tool changes: " + std::to_string(report.tool_changes_before) + " before, " +
                std::to_string(report.tool_changes_after) + " after.\n";
    }
    if (report.request.ends.avoided != nullptr) {
        text +=
            "Moves around keep-outs: " + std::to_string(report.figures.total.before.bent_moves) +
            " before, " + std::to_string(report.figures.total.after.bent_moves) + " after.\n";
    }
    for (const std::string& note : report.notes) {
        text += nmk_text::wrapped(nmk_text::line_text(note) + ".", 0, nmk_text::terminal_columns);
    }
    return text;
}

}  // namespace nmk_order
