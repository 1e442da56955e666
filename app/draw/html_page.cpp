// html_page: one self-contained page with the picture and the figures; nothing is fetched.

#include "draw/html_page.h"

#include <vector>

#include "draw/order_picture.h"
#include "text/escaped_text.h"

namespace nmk_app {

namespace {

constexpr const char* style = R"(
body { margin: 0 auto; max-width: 1500px; padding: 1.5rem; color: #1f2933; background: #fff;
       font-family: 'Segoe UI', 'Helvetica Neue', Arial, sans-serif; }
h1 { font-size: 1.5rem; margin: 0 0 .25rem; overflow-wrap: anywhere; }
p { color: #52606d; }
figure { margin: 1rem 0; }
figure svg { width: 100%; height: auto; }
table { border-collapse: collapse; font-variant-numeric: tabular-nums; }
th, td { padding: .35rem .9rem; text-align: right; }
th:first-child, td:first-child { text-align: left; }
thead tr:last-child th { font-weight: 400; color: #52606d; border-bottom: 1px solid #c5ccd4; }
tbody tr:last-child td { font-weight: 700; border-top: 1px solid #c5ccd4; }
)";

std::string table_row(const std::vector<std::string>& cells, const std::string& tag) {
    std::string row = "<tr>";
    for (const std::string& cell : cells) {
        row += "<" + tag + ">" + xml_text(cell) + "</" + tag + ">";
    }
    return row + "</tr>\n";
}

std::string figure_table(const OrderReport& report) {
    const FigureCells cells = figure_cells(report);
    std::string table = "<table>\n<thead>\n" + table_row(cells.headings, "th") +
                        table_row(cells.units, "th") + "</thead>\n<tbody>\n";
    for (const std::vector<std::string>& row : cells.rows) {
        table += table_row(row, "td");
    }
    return table + "</tbody>\n</table>\n";
}

}  // namespace

std::string order_page(const MachiningJob& job, const OrderedJob& ordered,
                       const OrderReport& report) {
    const std::string name = xml_text(report.options.file_name);
    std::string page = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n";
    page += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n";
    page += "<title>" + name + ": before and after ordering</title>\n";
    page += std::string("<style>") + style + "</style>\n</head>\n<body>\n";
    page += "<h1>" + name + "</h1>\n<p>" + xml_text(report_summary(report)) + "</p>\n";
    page += "<figure>\n" + order_picture(job, ordered, report, false) + "</figure>\n";
    page += figure_table(report) + "<p>" + xml_text(rapid_summary(report)) + "</p>\n";
    for (const std::string& note : report.notes) {
        page += "<p>" + xml_text(note) + ".</p>\n";
    }
    return page + "</body>\n</html>\n";
}

}  // namespace nmk_app
