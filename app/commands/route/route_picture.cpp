// route_picture: the map, the cells that a search visited in their order, and the route.

#include "commands/route/route_picture.h"

#include <algorithm>

#include "commands/route/route_panel.h"
#include "draw/colour_scale.h"
#include "draw/end_marks.h"
#include "draw/legend_line.h"
#include "files/base_name.h"

namespace nmk_route {

namespace {

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double max_width = 1040.0;  // of the panel
constexpr double max_height = 800.0;
constexpr double max_cell = 48.0;
constexpr double min_width = 760.0;  // for heading and legend
constexpr double heading_height = 118.0;

struct Layout {
    GridView view;
    double panel_width = 0.0;
    double panel_height = 0.0;

    double width() const { return 2 * margin + panel_width; }
};

Layout layout_of(const nmk_lattice::RoutePlane& plane) {
    const giPoint2 steps = plane.steps();
    const double scale =
        std::min({max_width / (plane.columns() * steps.x), max_height / (plane.rows() * steps.y),
                  max_cell / steps.x, max_cell / steps.y});
    Layout layout;
    GridView& view = layout.view;
    view.columns = plane.columns();
    view.rows = plane.rows();
    view.cell_width = steps.x * scale;
    view.cell_height = steps.y * scale;
    view.downwards = plane.is_map;
    layout.panel_width = std::max(view.width(), min_width);
    layout.panel_height = view.height();
    view.corner = {margin + (layout.panel_width - view.width()) / 2, heading_height};
    return layout;
}

void draw_title(nmk_draw::SvgDocument& svg, const Layout& layout, const RouteReport& report) {
    svg.text({margin, 44.0}, nmk_files::base_name(report.options.file_name),
             "font-size=\"26\" font-weight=\"700\" fill=\"#1f2933\"");
    const std::string summary = route_summary(report);
    const std::string colour = report.route.is_found() ? "#1f2933" : "#a23b00";
    svg.text({margin, 70.0}, summary, "font-size=\"17\" fill=\"" + colour + "\"");
    svg.text(
        {margin, 94.0},
        plane_summary(report) + "; " + std::to_string(report.route.expanded) + " nodes expanded",
        "font-size=\"15\" fill=\"#6b7785\"");
    svg.line({margin, 106.0}, {layout.width() - margin, 106.0}, "stroke=\"#e3e7eb\"");
}

void draw_closing_scale(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at, double width) {
    constexpr int parts = 30;
    const double step = width / parts;
    for (int i = 0; i < parts; ++i) {
        svg.rectangle({at.x + i * step, at.y - 8.0}, step + 0.3, 16.0,
                      "fill=\"" + nmk_draw::closing_colour(i / double{parts - 1}) + "\"");
    }
    svg.rectangle({at.x, at.y - 8.0}, width, 16.0, "fill=\"none\" stroke=\"#8b97a4\"");
}

void draw_goal_entries(nmk_draw::SvgDocument& svg, nmk_draw::LegendLine& line,
                       const RouteReport& report) {
    nmk_draw::draw_entry(svg, line, "goal", 20, [&](nmk_draw::SvgPoint at) {
        draw_goal_mark(svg, {at.x + 10, at.y});
    });
    if (report.request.kind == GoalKind::point || report.request.kind == GoalKind::moving_line) {
        if (report.has_moved_goal()) {
            nmk_draw::draw_entry(svg, line, "goal at first", 14, [&](nmk_draw::SvgPoint at) {
                draw_first_goal_mark(svg, {at.x + 7, at.y});
            });
        }
        return;
    }
    nmk_draw::draw_entry(svg, line, "goal line", 40, [&](nmk_draw::SvgPoint at) {
        draw_goal_line(svg, at, {at.x + 40, at.y});
    });
}

double draw_legend(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                   const RouteReport& report) {
    nmk_draw::LegendLine line(column, top);
    nmk_draw::draw_entry(svg, line, "blocked", 16, [&](nmk_draw::SvgPoint at) {
        svg.rectangle({at.x, at.y - 8}, 16, 16,
                      "rx=\"3\" fill=\"" + std::string(blocked_colour) + "\"");
    });
    nmk_draw::draw_entry(svg, line, "visited, first to last", 110,
                         [&](nmk_draw::SvgPoint at) { draw_closing_scale(svg, at, 110); });
    nmk_draw::draw_entry(svg, line, "start", 12, [&](nmk_draw::SvgPoint at) {
        nmk_draw::draw_start_mark(svg, {at.x + 6, at.y});
    });
    draw_goal_entries(svg, line, report);
    if (!report.route.is_found()) {
        nmk_draw::draw_entry(svg, line, "nearest to the goal", 20, [&](nmk_draw::SvgPoint at) {
            draw_nearest_mark(svg, {at.x + 10, at.y});
        });
        return line.bottom();
    }
    nmk_draw::draw_entry(svg, line, "route", 40, [&](nmk_draw::SvgPoint at) {
        draw_route_line(svg, {at, {at.x + 40, at.y}}, 3.5);
    });
    if (report.arrives_elsewhere()) {
        nmk_draw::draw_entry(svg, line, "arrival", 12, [&](nmk_draw::SvgPoint at) {
            nmk_draw::draw_end_mark(svg, {at.x + 6, at.y});
        });
    }
    return line.bottom();
}

/// Everything but the background; returns its lower edge.
double draw_content(nmk_draw::SvgDocument& svg, const Layout& layout, const RouteReport& report) {
    draw_title(svg, layout, report);
    const GridView& view = layout.view;
    svg.rectangle({view.corner.x - 1, view.corner.y - 1}, view.width() + 2, view.height() + 2,
                  "fill=\"#ffffff\" stroke=\"#8b97a4\"");
    draw_cells(svg, view, report);
    draw_route(svg, view, report);
    const nmk_draw::PictureColumn column{margin, layout.width() - margin};
    return draw_legend(svg, column, heading_height + layout.panel_height + 16.0, report);
}

}  // namespace

std::string route_picture(const RouteReport& report) {
    const Layout layout = layout_of(report.plane);
    const std::string title =
        nmk_files::base_name(report.options.file_name) + ": " + route_summary(report);
    nmk_draw::SvgDocument svg;
    const double bottom = draw_content(svg, layout, report);
    return svg.str(layout.width(), bottom + margin / 2, title);
}

}  // namespace nmk_route
