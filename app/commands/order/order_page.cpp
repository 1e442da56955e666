// order_page: one self-contained HTML page with the picture and the figures.

#include "commands/order/order_page.h"

#include <span>
#include <vector>

#include "commands/order/order_picture.h"
#include "commands/order/order_table.h"
#include "draw/html_frame.h"
#include "text/escaped_text.h"

namespace nmk_order {

namespace {

std::string table_row(const std::vector<std::string>& cells, const std::string& tag) {
    std::string row = "<tr>";
    for (const std::string& cell : cells) {
        row += "<" + tag + ">" + nmk_text::xml_text(cell) + "</" + tag + ">";
    }
    return row + "</tr>\n";
}

std::string figure_table(const OrderReport& report) {
    const FigureCells cells = figure_cells(report);
    std::string table = "<table>\n<thead>\n" + table_row(cells.headings, "th") +
                        table_row(cells.units, "th") + "</thead>\n<tbody>\n";
    for (const std::vector<std::string>& row : std::span(cells.rows).first(cells.rows.size() - 1)) {
        table += table_row(row, "td");
    }
    return table + "</tbody>\n<tfoot>\n" + table_row(cells.rows.back(), "td") +
           "</tfoot>\n</table>\n";
}

}  // namespace

std::string order_page(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                       const OrderReport& report) {
    std::string content = "<p>" + nmk_text::xml_text(report_summary(report)) + "</p>\n";
    content += "<figure>\n" + order_picture(job, ordered, report, false) + "</figure>\n";
    content += figure_table(report) + "<p>" + nmk_text::xml_text(rapid_summary(report)) + "</p>\n";
    for (const std::string& note : report.notes) {
        content += "<p>" + nmk_text::xml_text(note) + ".</p>\n";
    }
    const std::string& name = report.options.file_name;
    return nmk_draw::html_frame(name + ": before and after ordering", name, content);
}

}  // namespace nmk_order
