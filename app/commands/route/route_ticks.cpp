// route_ticks: round coordinates along the left and the lower side of a route's panel.

#include "commands/route/route_ticks.h"

#include <algorithm>
#include <string>
#include <vector>

#include "draw/axis_ticks.h"
#include "draw/fitted_text.h"
#include "draw/mark_group.h"
#include "text/number_format.h"

namespace nmk_route {

namespace {

constexpr double tick_length = 5.0;
constexpr double pixels_per_tick_in_x = 110.0;  // about
constexpr double pixels_per_tick_in_y = 70.0;
constexpr double number_size = 14.0;  // that of axis_number_style

/// Round coordinates from the first of so many cells to the last, about `count` of them; that of
/// the first cell where no round one is in range. Those of a map are whole.
std::vector<nmk_draw::AxisTick> coordinate_ticks(double first, double step, int cells, double count,
                                                 bool is_map) {
    const nmk_draw::PlotRange range{first - step / 2, first + (cells - 0.5) * step};
    std::vector<nmk_draw::AxisTick> ticks =
        nmk_draw::axis_ticks(range, std::max(count, 1.0), is_map ? 1.0 : 0.0);
    if (ticks.empty()) {
        ticks.push_back({first, nmk_text::short_number(first, 6)});
    }
    return ticks;
}

std::vector<nmk_draw::AxisTick> column_ticks(const nmk_lattice::RoutePlane& plane, double width) {
    return coordinate_ticks(plane.at({0, 0}).x, plane.steps().x, plane.columns(),
                            width / pixels_per_tick_in_x, plane.is_map);
}

std::vector<nmk_draw::AxisTick> row_ticks(const nmk_lattice::RoutePlane& plane, double height) {
    return coordinate_ticks(plane.at({0, 0}).y, plane.steps().y, plane.rows(),
                            height / pixels_per_tick_in_y, plane.is_map);
}

void write_number(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at, const std::string& words,
                  const std::string& anchor) {
    nmk_draw::draw_mark(svg, at, "class=\"tick\"", [&] {
        svg.text({}, words,
                 std::string(nmk_draw::axis_number_style) + " text-anchor=\"" + anchor + "\"");
    });
}

}  // namespace

double numbers_width(const nmk_lattice::RoutePlane& plane, double height) {
    double width = 0.0;
    for (const nmk_draw::AxisTick& tick : row_ticks(plane, height)) {
        width = std::max(width, nmk_draw::text_width(tick.words, number_size));
    }
    return width + 14.0;
}

void draw_ticks(nmk_draw::SvgDocument& svg, const GridView& view,
                const nmk_lattice::RoutePlane& plane) {
    const giPoint2 first = plane.at({0, 0});
    const double left = view.corner.x;
    const double bottom = view.bottom();
    std::vector<nmk_draw::SvgPoint> strokes;
    for (const nmk_draw::AxisTick& tick : column_ticks(plane, view.width())) {
        const double x = view.at(plane, {tick.value, first.y}).x;
        strokes.insert(strokes.end(), {{x, bottom}, {x, bottom + tick_length}});
        write_number(svg, {x, bottom + 21.0}, tick.words, "middle");
    }
    for (const nmk_draw::AxisTick& tick : row_ticks(plane, view.height())) {
        const double y = view.at(plane, {first.x, tick.value}).y;
        strokes.insert(strokes.end(), {{left - tick_length, y}, {left, y}});
        write_number(svg, {left - 9.0, y + 5.0}, tick.words, "end");
    }
    svg.separate_lines(strokes, "fill=\"none\" stroke=\"#8b97a4\"");
}

}  // namespace nmk_route
