// route_page: one self-contained HTML page with the picture and the figures of a route.

#include "commands/route/route_page.h"

#include "commands/route/route_picture.h"
#include "draw/html_frame.h"
#include "text/escaped_text.h"

namespace nmk_route {

std::string route_page(const RouteReport& report) {
    std::string content = "<p>" + nmk_text::xml_text(route_summary(report)) + "</p>\n";
    content += "<figure>\n" + route_picture(report) + "</figure>\n<table>\n<tbody>\n";
    for (const auto& [name, value] : route_figures(report)) {
        content += "<tr><td>" + nmk_text::xml_text(name) + "</td><td>" + nmk_text::xml_text(value) +
                   "</td></tr>\n";
    }
    content += "</tbody>\n</table>\n";
    for (const std::string& note : report.notes) {
        content += "<p>" + nmk_text::xml_text(note) + ".</p>\n";
    }
    const std::string& name = report.options.file_name;
    return nmk_draw::html_frame(name + ": a route through it", name, content);
}

}  // namespace nmk_route
