// route_cells: the cells of a lattice: blocked ones, and visited ones coloured by their order.

#include "commands/route/route_cells.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "draw/colour_scale.h"
#include "text/number_format.h"

namespace nmk_route {

namespace {

// Kinds of cells by colour; the closed ones from first to last.
constexpr std::uint8_t free_kind = 0;
constexpr std::size_t blocked_kind = 1;
constexpr std::size_t first_closed_kind = 2;
constexpr std::size_t shades = 40;
constexpr std::size_t kinds = first_closed_kind + shades;

constexpr int max_drawn_cells = 270'000;     // 512 by 512 and some more
constexpr double min_cell_with_lines = 7.0;  // pixels; grid lines would hide smaller cells

std::vector<std::uint8_t> cell_kinds(const RouteReport& report) {
    const nmk_lattice::RoutePlane& plane = report.plane;
    std::vector<std::uint8_t> cells(plane.cell_count(), 0);
    const auto cell = [&](nmk_lattice::GridCell at) -> std::uint8_t& {
        return cells[static_cast<std::size_t>(at.row) * static_cast<std::size_t>(plane.columns()) +
                     static_cast<std::size_t>(at.column)];
    };
    for (int row = 0; row < plane.rows(); ++row) {
        for (int column = 0; column < plane.columns(); ++column) {
            if (plane.is_blocked({column, row})) {
                cell({column, row}) = blocked_kind;
            }
        }
    }
    const std::vector<nmk_lattice::GridCell>& closed = report.route.closed;
    for (std::size_t i = 0; i < closed.size(); ++i) {
        cell(closed[i]) = static_cast<std::uint8_t>(first_closed_kind + i * shades / closed.size());
    }
    return cells;
}

/// One path for each kind: its runs of cells, row by row, as rectangles in units of cells. Of cells
/// smaller than a pixel one in `every` columns and rows is drawn, so many times as large.
std::array<std::string, kinds> run_paths(const GridView& view,
                                         const std::vector<std::uint8_t>& cells, int every) {
    std::array<std::string, kinds> paths;
    for (int row = 0; row < view.rows; row += every) {
        const std::uint8_t* const in_row =
            cells.data() + static_cast<std::ptrdiff_t>(row) * view.columns;
        const int height = std::min(every, view.rows - row);
        const std::string y =
            std::to_string(view.drawn_row(view.downwards ? row : row + height - 1));
        const std::string h = std::to_string(height);
        for (int from = 0; from < view.columns;) {
            int to = from + every;
            while (to < view.columns && in_row[to] == in_row[from]) {
                to += every;
            }
            to = std::min(to, view.columns);
            const std::string length = std::to_string(to - from);
            if (in_row[from] != free_kind) {
                paths[in_row[from]] += "M" + std::to_string(from) + " " + y + "h" + length + "v" +
                                       h + "h-" + length + "z";
            }
            from = to;
        }
    }
    return paths;
}

std::string colour_of(std::size_t kind) {
    if (kind == blocked_kind) {
        return blocked_colour;
    }
    return nmk_draw::closing_colour(static_cast<double>(kind - first_closed_kind) /
                                    double{shades - 1});
}

void draw_grid_lines(nmk_draw::SvgDocument& svg, const GridView& view) {
    if (std::min(view.cell_width, view.cell_height) < min_cell_with_lines) {
        return;
    }
    std::vector<nmk_draw::SvgPoint> pairs;
    for (int column = 1; column < view.columns; ++column) {
        const double x = view.corner.x + column * view.cell_width;
        pairs.insert(pairs.end(), {{x, view.corner.y}, {x, view.bottom()}});
    }
    for (int row = 1; row < view.rows; ++row) {
        const double y = view.corner.y + row * view.cell_height;
        pairs.insert(pairs.end(), {{view.corner.x, y}, {view.right(), y}});
    }
    svg.separate_lines(pairs,
                       "class=\"borders\" fill=\"none\" stroke=\"#1f2933\" "
                       "stroke-opacity=\"0.08\" stroke-width=\"1\"");
}

}  // namespace

int every_cell(const GridView& view) {
    const auto drawn = [&](int every) {
        const int columns = (view.columns + every - 1) / every;
        const int rows = (view.rows + every - 1) / every;
        return columns * rows;  // at most max_cells of a plane, which an int holds
    };
    int every = 1;
    while (drawn(every) > max_drawn_cells) {
        ++every;
    }
    return every;
}

void draw_cells(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report) {
    const auto number = [](double value) { return nmk_text::short_number(value, 6); };
    const std::array<std::string, kinds> paths =
        run_paths(view, cell_kinds(report), every_cell(view));
    const auto draw_kind = [&](std::size_t kind) {
        if (!paths[kind].empty()) {
            svg.raw("<path d=\"" + paths[kind] + "\" fill=\"" + colour_of(kind) + "\"/>\n");
        }
    };
    svg.open_group("shape-rendering=\"crispEdges\" transform=\"translate(" + number(view.corner.x) +
                   " " + number(view.corner.y) + ") scale(" + number(view.cell_width) + " " +
                   number(view.cell_height) + ")\"");
    draw_kind(blocked_kind);
    svg.open_group("class=\"visited\"");
    for (std::size_t kind = first_closed_kind; kind < kinds; ++kind) {
        draw_kind(kind);
    }
    svg.close_group();
    svg.close_group();
    draw_grid_lines(svg, view);
}

}  // namespace nmk_route
