// order_legend: the legend of the picture, its scale bar and its table of figures.

#include "commands/order/order_legend.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "commands/order/order_panel.h"
#include "draw/colour_scale.h"
#include "draw/end_marks.h"
#include "draw/legend_line.h"
#include "draw/round_length.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

void draw_gradient(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at, double width) {
    constexpr int parts = 16;
    for (int i = 0; i < parts; ++i) {
        const double step = width / parts;
        svg.line({at.x + i * step, at.y}, {at.x + i * step + step * 0.66, at.y},
                 "stroke-width=\"2.5\" stroke=\"" + nmk_draw::order_colour(i / double{parts - 1}) +
                     "\"");
    }
}

/// The relative widths of the columns of figure_cells.
constexpr std::array<double, 9> column_shares = {1.0, 1.0, 0.8, 1.35, 1.25, 0.9, 1.0, 1.1, 1.15};

void draw_cells(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double y,
                const std::vector<std::string>& cells, const std::string& attributes) {
    double sum = 0.0;
    for (const double share : column_shares) {
        sum += share;
    }
    double x = column.left;
    for (std::size_t i = 0; i < cells.size() && i < column_shares.size(); ++i) {
        const double left = x;
        x += (column.right - column.left) * column_shares[i] / sum;
        const nmk_draw::SvgPoint at{i == 0 ? left + 8.0 : x - 8.0, y};
        svg.text(at, cells[i], attributes + (i == 0 ? "" : " text-anchor=\"end\""));
    }
}

}  // namespace

double draw_marks_legend(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top) {
    nmk_draw::LegendLine line(column, top);
    nmk_draw::draw_entry(svg, line, "hole", 14, [&](nmk_draw::SvgPoint at) {
        svg.circle({at.x + 7, at.y}, 6, "fill=\"#eef1f4\" stroke=\"#5c6b7a\"");
    });
    nmk_draw::draw_entry(svg, line, "slot", 28, [&](nmk_draw::SvgPoint at) {
        svg.rectangle({at.x, at.y - 5}, 28, 10, "rx=\"5\" fill=\"#eef1f4\" stroke=\"#5c6b7a\"");
    });
    nmk_draw::draw_entry(svg, line, "travel, first to last", 110,
                         [&](nmk_draw::SvgPoint at) { draw_gradient(svg, at, 110); });
    nmk_draw::draw_entry(svg, line, "a tool starts", 12, [&](nmk_draw::SvgPoint at) {
        nmk_draw::draw_start_mark(svg, {at.x + 6, at.y});
    });
    nmk_draw::draw_entry(svg, line, "a tool ends", 12, [&](nmk_draw::SvgPoint at) {
        nmk_draw::draw_end_mark(svg, {at.x + 6, at.y});
    });
    nmk_draw::draw_entry(svg, line, "longest move", 40, [&](nmk_draw::SvgPoint at) {
        draw_longest_mark(svg, {at.x + 5, at.y}, {at.x + 35, at.y});
    });
    return line.bottom();
}

double draw_tools_legend(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                         const std::vector<nmk_job::JobTool>& tools) {
    nmk_draw::LegendLine line(column, top);
    for (std::size_t i = 0; i < tools.size(); ++i) {
        const std::string diameter =
            tools[i].diameter ? ", " + nmk_text::short_number(*tools[i].diameter, 3) + " mm" : "";
        nmk_draw::draw_entry(svg, line, tools[i].name + diameter, 16, [&](nmk_draw::SvgPoint at) {
            svg.rectangle({at.x, at.y - 8}, 16, 16,
                          "rx=\"3\" stroke=\"#5c6b7a\" fill=\"" + nmk_draw::tool_colour(i) + "\"");
        });
    }
    return line.bottom();
}

void draw_scale_bar(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    double pixels_per_mm) {
    const double length = nmk_draw::round_length(140.0 / pixels_per_mm);
    const double right = column.right;
    const double left = right - length * pixels_per_mm;
    const double y = top + 12.0;
    svg.open_group("stroke=\"#3c4654\" stroke-width=\"1.5\"");
    svg.line({left, y}, {right, y});
    svg.line({left, y - 5}, {left, y + 5});
    svg.line({right, y - 5}, {right, y + 5});
    svg.close_group();
    svg.text({left - 9, y + 5}, nmk_text::short_number(length, 9) + " mm",
             std::string(nmk_draw::legend_text) + " text-anchor=\"end\"");
}

double draw_figures(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    const OrderReport& report) {
    const FigureCells cells = figure_cells(report);
    const std::string size = "font-size=\"16\" ";
    const auto rule = [&](double y) {
        svg.line({column.left, y}, {column.right, y}, "stroke=\"#c5ccd4\"");
    };
    double y = top + 20.0;
    draw_cells(svg, column, y, cells.headings, size + "font-weight=\"600\" fill=\"#1f2933\"");
    y += 20.0;
    draw_cells(svg, column, y, cells.units, "font-size=\"14\" fill=\"#6b7785\"");
    rule(y + 9.0);
    y += 31.0;
    for (std::size_t i = 0; i < cells.rows.size(); ++i, y += 26.0) {
        const bool total = i + 1 == cells.rows.size();
        if (total) {
            rule(y - 18.0);
        }
        draw_cells(svg, column, y, cells.rows[i],
                   size + (total ? "font-weight=\"700\" " : "") + "fill=\"#1f2933\"");
    }
    svg.text({column.left + 8.0, y + 10.0}, rapid_summary(report),
             "font-size=\"14\" fill=\"#6b7785\"");
    return y + 24.0;
}

}  // namespace nmk_order
