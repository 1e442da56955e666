// order_legend: the legend of the picture, its scale bar and its table of figures.

#include "commands/order/order_legend.h"

#include <algorithm>
#include <array>
#include <string>

#include "commands/order/keep_out_marks.h"
#include "commands/order/length_texts.h"
#include "commands/order/order_cuts.h"
#include "commands/order/order_places.h"
#include "commands/order/order_travel.h"
#include "draw/colour_scale.h"
#include "draw/end_marks.h"
#include "draw/fitted_text.h"
#include "draw/round_length.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

using nmk_draw::SvgDocument;
using nmk_draw::SvgPoint;

constexpr double cell_size = 16.0;  // of the letters
constexpr double cell_margin = 8.0;
constexpr double max_scale_bar = 140.0;  // pixels

void draw_gradient(SvgDocument& svg, SvgPoint at, double width, bool dashed) {
    constexpr int parts = 16;
    for (int i = 0; i < parts; ++i) {
        const double step = width / parts;
        svg.line({at.x + i * step, at.y}, {at.x + (i + (dashed ? 0.66 : 1.05)) * step, at.y},
                 "stroke-width=\"2.5\" stroke=\"" + nmk_draw::order_colour(i / double{parts - 1}) +
                     "\"");
    }
}

bool has_items(const OrderDrawing& drawing, bool slots) {
    const auto& items = drawing.job.items;
    return std::any_of(items.begin(), items.end(),
                       [slots](const auto& item) { return item.end.has_value() == slots; });
}

bool has_moves(const OrderDrawing& drawing) {
    const auto& runs = drawing.ordered.runs;
    return std::any_of(runs.begin(), runs.end(),
                       [](const OrderRun& run) { return move_count(run.count, run.ends) > 0; });
}

nmk_draw::LegendEntries item_entries(const OrderDrawing& drawing) {
    nmk_draw::LegendEntries entries;
    if (has_items(drawing, false)) {
        entries.push_back(
            {"hole", 14, [](SvgDocument& svg, SvgPoint at) {
                 svg.circle({at.x + 7, at.y}, 6, "fill=\"#eef1f4\" stroke=\"#5c6b7a\"");
             }});
    }
    if (has_items(drawing, true)) {
        entries.push_back({"slot", 28, [](SvgDocument& svg, SvgPoint at) {
                               svg.rectangle({at.x, at.y - 5}, 28, 10,
                                             "rx=\"5\" fill=\"#eef1f4\" stroke=\"#5c6b7a\"");
                           }});
    }
    return entries;
}

nmk_draw::LegendEntries travel_entries(const OrderDrawing& drawing) {
    const bool one_run = drawing.ordered.runs.size() < 2;
    return {{one_run ? "travel, first to last" : "travel of each tool, first to last", 110,
             [dashed = drawing.plan.is_dashed](SvgDocument& svg, SvgPoint at) {
                 svg.open_group("class=\"travel\"");
                 draw_gradient(svg, at, 110, dashed);
                 svg.close_group();
             }},
            {"longest move", 40, [](SvgDocument& svg, SvgPoint at) {
                 draw_longest_mark(svg, {{at.x + 5, at.y}, {at.x + 35, at.y}});
             }}};
}

nmk_draw::LegendEntries place_entries(const OrderDrawing& drawing) {
    nmk_draw::LegendEntries entries;
    const TravelPlaces places = travel_places(drawing.ordered.runs);
    if (places.start) {
        entries.push_back({"start place", 12, [](SvgDocument& svg, SvgPoint at) {
                               draw_start_place(svg, {at.x + 6, at.y});
                           }});
    }
    if (places.end) {
        entries.push_back({"end place", 12, [](SvgDocument& svg, SvgPoint at) {
                               draw_end_place(svg, {at.x + 6, at.y});
                           }});
    }
    return entries;
}

nmk_draw::LegendEntries end_entries() {
    return {{"a tool starts", 12,
             [](SvgDocument& svg, SvgPoint at) {
                 nmk_draw::draw_start_mark(svg, {at.x + 6, at.y});
             }},
            {"a tool ends", 12, [](SvgDocument& svg, SvgPoint at) {
                 nmk_draw::draw_end_mark(svg, {at.x + 6, at.y});
             }}};
}

/// The relative widths of the columns of figure_cells.
constexpr std::array<double, 9> column_shares = {1.0, 1.0, 0.8, 1.35, 1.25, 0.9, 1.0, 1.1, 1.15};

void draw_cells(SvgDocument& svg, nmk_draw::PictureColumn column, double y,
                const std::vector<std::string>& cells, const std::string& attributes) {
    double sum = 0.0;
    for (const double share : column_shares) {
        sum += share;
    }
    double x = column.left;
    for (std::size_t i = 0; i < cells.size() && i < column_shares.size(); ++i) {
        const double left = x;
        x += column.width() * column_shares[i] / sum;
        const SvgPoint at{i == 0 ? left + cell_margin : x - cell_margin, y};
        const std::string words =
            i == 0 ? nmk_draw::fitted_text(cells[i], cell_size, x - at.x) : cells[i];
        svg.text(at, words, attributes + (i == 0 ? "" : " text-anchor=\"end\""));
    }
}

}  // namespace

nmk_draw::LegendEntries marks_legend(const OrderDrawing& drawing) {
    nmk_draw::LegendEntries entries = item_entries(drawing);
    const auto add = [&](const nmk_draw::LegendEntries& more) {
        entries.insert(entries.end(), more.begin(), more.end());
    };
    if (has_moves(drawing)) {
        add(travel_entries(drawing));
    }
    add(place_entries(drawing));
    add(end_entries());
    if (avoided_by(drawing.ordered.runs) != nullptr) {
        entries.push_back({"keep-out with its clearance", 22, draw_keep_out_sample});
    }
    return entries;
}

nmk_draw::LegendEntries tools_legend(const OrderDrawing& drawing) {
    const ToolGroups& groups = drawing.plan.tools;
    const LengthTexts text(drawing.job.units);
    nmk_draw::LegendEntries entries;
    for (std::size_t i = 0; i < groups.count(); ++i) {
        const nmk_job::JobTool& tool = drawing.job.tools[i];
        const std::string words = groups.is_rest(i)
                                      ? std::to_string(groups.tools - groups.own()) + " more tools"
                                  : tool.diameter ? tool.name + ", " + text.tool(*tool.diameter)
                                                  : tool.name;
        entries.push_back(
            {words, 16, [colour = group_colour(groups, i)](SvgDocument& svg, SvgPoint at) {
                 svg.rectangle({at.x, at.y - 8}, 16, 16,
                               "rx=\"3\" stroke=\"#5c6b7a\" fill=\"" + colour + "\"");
             }});
    }
    return entries;
}

void draw_scale_bar(SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    const OrderDrawing& drawing) {
    const nmk_job::JobUnits units = drawing.job.units;
    const double pixels_per_unit = drawing.view.scale * nmk_job::mm_of(units);
    const double length = nmk_draw::round_length(max_scale_bar / pixels_per_unit);
    const double right = column.right;
    const double left = right - length * pixels_per_unit;
    const double y = top + 12.0;
    svg.open_group("stroke=\"#3c4654\" stroke-width=\"1.5\"");
    svg.line({left, y}, {right, y});
    svg.line({left, y - 5}, {left, y + 5});
    svg.line({right, y - 5}, {right, y + 5});
    svg.close_group();
    svg.text({left - 9, y + 5}, nmk_text::short_number(length, 9) + " " + length_unit(units),
             std::string(nmk_draw::legend_text) + " text-anchor=\"end\"");
}

FigureCells shortened(FigureCells cells, std::size_t max_tools) {
    const std::size_t tools = cells.rows.size() - 1;
    if (tools > max_tools) {
        const std::size_t kept = max_tools - 1;
        cells.rows[kept] = {std::to_string(tools - kept) + " more tools"};
        cells.rows.erase(cells.rows.begin() + static_cast<std::ptrdiff_t>(max_tools),
                         cells.rows.end() - 1);
    }
    return cells;
}

double draw_figures(SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    const OrderReport& report) {
    const FigureCells cells = shortened(figure_cells(report), ToolGroups::max_groups);
    const std::string size = "font-size=\"" + nmk_text::short_number(cell_size, 1) + "\" ";
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
    if (report.job_times) {
        y += 20.0;
        svg.text({column.left + 8.0, y + 10.0}, job_time_text(*report.job_times),
                 "font-size=\"14\" fill=\"#6b7785\"");
    }
    return y + 24.0;
}

}  // namespace nmk_order
