// files_table: the figures of several ordered files as one table.

#include "commands/order/files_table.h"

#include <cstddef>

#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/text_columns.h"
#include "text/wrapped_text.h"

namespace nmk_order {

namespace {

constexpr std::size_t table_width = 80;

using Cells = std::vector<std::string>;

Cells row_cells(const std::string& name, const std::string& tools, const ToolFigures& figures,
                double seconds) {
    return {name,
            tools,
            std::to_string(figures.items),
            nmk_text::fixed_number(figures.before.travel, 1),
            nmk_text::fixed_number(figures.after.travel, 1),
            nmk_text::fixed_number(saved_percent(figures.before.travel, figures.after.travel), 1),
            nmk_text::fixed_number(seconds, 1)};
}

double seconds_of(const OrderReport& report) {
    return rapid_seconds(report.figures.total.after.travel, report.options.rapid);
}

std::vector<Cells> rows_of(const std::vector<OrderReport>& reports) {
    std::vector<Cells> rows = {{"file", "tools", "items", "before", "after", "saved", "rapids"},
                               {"", "", "", "mm", "mm", "%", "s"}};
    ToolFigures sum;
    double seconds = 0.0;
    for (const OrderReport& report : reports) {
        const ToolFigures& total = report.figures.total;
        rows.push_back(row_cells(nmk_text::line_text(report.options.file_name),
                                 std::to_string(report.figures.tools.size()), total,
                                 seconds_of(report)));
        sum.items += total.items;
        sum.before.travel += total.before.travel;
        sum.after.travel += total.after.travel;
        seconds += seconds_of(report);
    }
    rows.push_back(row_cells("total", "", sum, seconds));
    return rows;
}

}  // namespace

std::string files_table(const std::vector<OrderReport>& reports) {
    const std::vector<std::string> lines = nmk_text::column_lines(rows_of(reports));
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i + 1 == lines.size()) {
            text += std::string(nmk_text::character_count(lines[0]), '-') + "\n";
        }
        text += lines[i] + "\n";
    }
    for (const OrderReport& report : reports) {
        for (const std::string& note : report.notes) {
            text += nmk_text::wrapped(
                nmk_text::line_text(report.options.file_name + ": " + note) + ".", 0, table_width);
        }
    }
    return text;
}

}  // namespace nmk_order
