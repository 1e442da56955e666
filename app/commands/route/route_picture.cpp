// route_picture: the map, the cells that a search visited in their order, and the route.

#include "commands/route/route_picture.h"

#include <algorithm>

#include "commands/route/route_legend.h"
#include "commands/route/route_panel.h"
#include "commands/route/route_ticks.h"
#include "draw/fitted_text.h"
#include "files/base_name.h"

namespace nmk_route {

namespace {

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double max_width = 1040.0;  // of the cells
constexpr double max_height = 800.0;
constexpr double max_cell = 48.0;
constexpr double min_width = 760.0;  // for heading and legend
constexpr double heading_height = 118.0;

void draw_heading(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column,
                  const RouteReport& report) {
    const auto fitted = [&](const std::string& words, double size) {
        return nmk_draw::fitted_text(words, size, column.width());
    };
    const std::string name = nmk_files::base_name(report.options.file_name);
    svg.text({column.left, 44.0}, fitted(name, 26.0 * 1.1),
             "font-size=\"26\" font-weight=\"700\" fill=\"#1f2933\"");
    const std::string colour = report.route.is_found() ? "#1f2933" : "#a23b00";
    svg.text({column.left, 70.0}, fitted(route_summary(report), 17.0),
             "font-size=\"17\" fill=\"" + colour + "\"");
    const std::string expanded = std::to_string(report.route.expanded) + " nodes expanded";
    svg.text({column.left, 94.0}, fitted(plane_summary(report) + "; " + expanded, 15.0),
             "font-size=\"15\" fill=\"#6b7785\"");
    svg.line({column.left, 106.0}, {column.right, 106.0}, "stroke=\"#e3e7eb\"");
}

}  // namespace

GridView grid_view(const RouteReport& report, nmk_draw::SvgPoint corner) {
    const nmk_lattice::RoutePlane& plane = report.plane;
    const giPoint2 steps = plane.steps();
    const double scale =
        std::min({max_width / (plane.columns() * steps.x), max_height / (plane.rows() * steps.y),
                  max_cell / steps.x, max_cell / steps.y});
    GridView view;
    view.corner = corner;
    view.columns = plane.columns();
    view.rows = plane.rows();
    view.cell_width = steps.x * scale;
    view.cell_height = steps.y * scale;
    view.downwards = plane.is_map;
    return view;
}

std::string route_picture(const RouteReport& report) {
    GridView view = grid_view(report, {margin, heading_height});
    const double numbers = numbers_width(report.plane, view.height());
    const double panel_width = numbers + view.width();
    const nmk_draw::PictureColumn column{margin, margin + std::max(panel_width, min_width)};
    view.corner.x += numbers + (column.width() - panel_width) / 2;
    nmk_draw::SvgDocument svg;
    draw_heading(svg, column, report);
    draw_panel(svg, view, report);
    const double top = heading_height + view.height() + numbers_height + 12.0;
    double bottom = nmk_draw::draw_legend(svg, column, top, route_legend(view, report));
    const std::string note = omission_note(view);
    if (!note.empty()) {
        svg.text({column.left, bottom + 17.0}, note, nmk_draw::legend_text);
        bottom += 27.0;
    }
    return svg.str(column.right + margin, bottom + margin / 2,
                   nmk_files::base_name(report.options.file_name) + ": " + route_summary(report));
}

}  // namespace nmk_route
