// route_legend: what the cells, lines and marks of a route's panel mean, only those that are drawn.

#include "commands/route/route_legend.h"

#include <string>

#include "commands/route/route_cells.h"
#include "draw/colour_scale.h"
#include "draw/end_marks.h"

namespace nmk_route {

namespace {

using nmk_draw::SvgDocument;
using nmk_draw::SvgPoint;

void draw_closing_scale(SvgDocument& svg, SvgPoint at, double width) {
    constexpr int parts = 30;
    const double step = width / parts;
    for (int i = 0; i < parts; ++i) {
        svg.rectangle({at.x + i * step, at.y - 8.0}, step + 0.3, 16.0,
                      "fill=\"" + nmk_draw::closing_colour(i / double{parts - 1}) + "\"");
    }
    svg.rectangle({at.x, at.y - 8.0}, width, 16.0, "fill=\"none\" stroke=\"#8b97a4\"");
}

/// A square cell in the middle of a symbol of 16 pixels.
void draw_cell(SvgDocument& svg, SvgPoint at, const std::string& attributes) {
    svg.rectangle({at.x, at.y - 8}, 16, 16, "rx=\"3\" " + attributes);
}

nmk_draw::LegendEntries cell_entries(const RouteReport& report) {
    nmk_draw::LegendEntries entries = {
        {"free", 16, [](SvgDocument& svg, SvgPoint at) {
             draw_cell(svg, at, "class=\"borders\" fill=\"#ffffff\" stroke=\"#c5ccd4\"");
         }}};
    if (report.plane.blocked_count() > 0) {
        entries.push_back({"blocked", 16, [](SvgDocument& svg, SvgPoint at) {
                               draw_cell(svg, at, "fill=\"" + std::string(blocked_colour) + "\"");
                           }});
    }
    entries.push_back({"visited, first to last", 110,
                       [](SvgDocument& svg, SvgPoint at) { draw_closing_scale(svg, at, 110); }});
    return entries;
}

void add_goal_entries(nmk_draw::LegendEntries& entries, const GridView& view,
                      const RouteReport& report) {
    if (shows_goal(view, report)) {
        entries.push_back({"goal", 20, [](SvgDocument& svg, SvgPoint at) {
                               draw_goal_mark(svg, {at.x + 10, at.y});
                           }});
    }
    if (report.has_moved_goal()) {
        entries.push_back({"goal at first", 14, [](SvgDocument& svg, SvgPoint at) {
                               draw_first_goal_mark(svg, {at.x + 7, at.y});
                           }});
    }
    if (shows_goal_movement(report)) {
        entries.push_back({"movement of the goal", 40, [](SvgDocument& svg, SvgPoint at) {
                               draw_goal_movement(svg, at, {at.x + 40, at.y});
                           }});
    }
    if (shows_goal_line(report)) {
        entries.push_back({"goal line", 40, [](SvgDocument& svg, SvgPoint at) {
                               draw_goal_line(svg, at, {at.x + 40, at.y});
                           }});
    }
}

void add_route_entries(nmk_draw::LegendEntries& entries, const RouteReport& report) {
    if (!report.route.is_found()) {
        entries.push_back({"nearest to the goal", 20, [](SvgDocument& svg, SvgPoint at) {
                               draw_nearest_mark(svg, {at.x + 10, at.y});
                           }});
    }
    if (report.route.nodes.size() > 1) {
        entries.push_back({"route", 40, [](SvgDocument& svg, SvgPoint at) {
                               draw_route_line(svg, {{at.x + 3, at.y}, {at.x + 37, at.y}}, 3.5);
                           }});
    }
    if (report.arrives_elsewhere()) {
        entries.push_back({"arrival", 12, [](SvgDocument& svg, SvgPoint at) {
                               nmk_draw::draw_end_mark(svg, {at.x + 6, at.y});
                           }});
    }
}

}  // namespace

std::string omission_note(const GridView& view) {
    const int every = every_cell(view);
    const std::string number = std::to_string(every);
    return every == 1 ? ""
                      : "Too many cells to draw them all: one in " + number +
                            " columns and one in " + number + " rows are drawn.";
}

nmk_draw::LegendEntries route_legend(const GridView& view, const RouteReport& report) {
    nmk_draw::LegendEntries entries = cell_entries(report);
    entries.push_back({"start", 12, [](SvgDocument& svg, SvgPoint at) {
                           nmk_draw::draw_start_mark(svg, {at.x + 6, at.y});
                       }});
    add_goal_entries(entries, view, report);
    add_route_entries(entries, report);
    return entries;
}

}  // namespace nmk_route
