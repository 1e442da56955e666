// route_page: one self-contained HTML page with the picture and the figures of a route.

#include "commands/route/route_page.h"

#include "commands/route/route_legend.h"
#include "commands/route/route_panel.h"
#include "commands/route/route_picture.h"
#include "commands/route/route_ticks.h"
#include "draw/html_controls.h"
#include "draw/html_frame.h"
#include "files/base_name.h"
#include "text/escaped_text.h"

namespace nmk_route {

namespace {

constexpr double air = 8.0;  // pixels, above the cells and to the right of them

std::string panel_element(const GridView& view, const RouteReport& report) {
    nmk_draw::SvgDocument svg;
    draw_panel(svg, view, report);
    const double numbers = numbers_width(report.plane, view.height());
    return svg.element({view.corner.x - numbers, view.corner.y - air}, numbers + view.width() + air,
                       view.height() + air + numbers_height,
                       nmk_draw::panel_attributes(route_summary(report)));
}

nmk_draw::HtmlTable figure_table(const RouteReport& report) {
    nmk_draw::HtmlTable table;
    for (const auto& [name, value] : route_figures(report)) {
        table.rows.push_back({name, value});
    }
    return table;
}

}  // namespace

std::string route_page(const RouteReport& report) {
    const GridView view = grid_view(report, {});
    std::string content = nmk_draw::html_toolbar({}, "step");
    content += nmk_draw::html_panels({{plane_summary(report), "", panel_element(view, report)}});
    content += nmk_draw::legend_list(route_legend(view, report));
    const std::string omission = omission_note(view);
    content += omission.empty() ? "" : "<p>" + nmk_text::xml_text(omission) + "</p>\n";
    content += nmk_draw::html_table(figure_table(report));
    for (const std::string& note : report.notes) {
        content += "<p>" + nmk_text::xml_text(note) + ".</p>\n";
    }
    const std::string name = nmk_files::base_name(report.options.file_name);
    return nmk_draw::html_frame(name + ": a route through it", name, content);
}

}  // namespace nmk_route
