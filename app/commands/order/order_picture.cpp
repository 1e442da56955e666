// order_picture: before and after side by side at one scale, a legend, and the figures below.

#include "commands/order/order_picture.h"

#include <algorithm>

#include "commands/order/order_legend.h"
#include "commands/order/order_panel.h"
#include "commands/order/part_view.h"
#include "draw/svg_document.h"
#include "files/base_name.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double gap = 36.0;         // between the panels
constexpr double max_width = 690.0;  // of a panel
constexpr double max_height = 640.0;
constexpr double min_width = 450.0;  // for headings and legend
constexpr double heading_height = 120.0;

struct Layout {
    PartView view;             // of the left panel, centred in it
    double panel_width = 0.0;  // at least that of the view
    double width = 0.0;
    double panel_bottom = 0.0;

    double panel_left(bool after) const { return margin + (after ? panel_width + gap : 0.0); }
    PartView view_of(bool after) const {
        PartView moved = view;
        moved.corner.x = panel_left(after) + (panel_width - view.width()) / 2;
        return moved;
    }
};

Layout layout_of(const nmk_job::MachiningJob& job) {
    Layout layout;
    layout.view.extent = part_extent(job);
    layout.view.scale =
        std::min(max_width / layout.view.extent.width(), max_height / layout.view.extent.height());
    layout.view.corner.y = heading_height;
    layout.panel_width = std::max(layout.view.width(), min_width);
    layout.width = 2 * margin + 2 * layout.panel_width + gap;
    layout.panel_bottom = heading_height + layout.view.height();
    return layout;
}

void draw_panel(nmk_draw::SvgDocument& svg, const Layout& layout, bool after,
                const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                const std::string& figures) {
    const double left = layout.panel_left(after);
    const double y = heading_height - 13.0;
    svg.text({left, y}, after ? "After" : "Before",
             "font-size=\"20\" font-weight=\"600\" fill=\"#1f2933\"");
    svg.text({left + layout.panel_width, y}, figures,
             "font-size=\"17\" fill=\"#3c4654\" text-anchor=\"end\"");
    svg.rectangle({left, heading_height}, layout.panel_width, layout.view.height(),
                  "rx=\"6\" fill=\"#fbfcfd\" stroke=\"#c5ccd4\"");
    draw_cuts(svg, layout.view_of(after), job);
    const nmk_draw::LabelBox panel{left, heading_height, layout.panel_width, layout.view.height()};
    const TravelRuns runs{job.items, ordered.runs, after ? ordered.after : ordered.before};
    draw_travel(svg, layout.view_of(after), panel, runs);
}

void draw_title(nmk_draw::SvgDocument& svg, const Layout& layout, const OrderReport& report) {
    svg.text({margin, 44.0}, nmk_files::base_name(report.options.file_name),
             "font-size=\"26\" font-weight=\"700\" fill=\"#1f2933\"");
    svg.text({margin, 70.0}, report_summary(report), "font-size=\"16\" fill=\"#6b7785\"");
    svg.line({margin, 82.0}, {layout.width - margin, 82.0}, "stroke=\"#e3e7eb\"");
}

std::string before_figures(const OrderReport& report) {
    return "travel " + nmk_text::fixed_number(report.figures.total.before.travel, 1) + " mm";
}

std::string after_figures(const OrderReport& report) {
    const double before = report.figures.total.before.travel;
    const double after = report.figures.total.after.travel;
    return "travel " + nmk_text::fixed_number(after, 1) + " mm, saved " +
           nmk_text::fixed_number(saved_percent(before, after), 1) + " %";
}

/// Everything but the background; returns its lower edge.
double draw_content(nmk_draw::SvgDocument& svg, const Layout& layout,
                    const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                    const OrderReport& report, bool figures) {
    draw_title(svg, layout, report);
    draw_panel(svg, layout, false, job, ordered, before_figures(report));
    draw_panel(svg, layout, true, job, ordered, after_figures(report));
    const nmk_draw::PictureColumn column{margin, layout.width - margin};
    double y = layout.panel_bottom + 14.0;
    draw_scale_bar(svg, column, y, layout.view.scale);
    y = draw_marks_legend(svg, {column.left, column.right - 260.0}, y);
    y = draw_tools_legend(svg, column, y, job.tools);
    return figures ? draw_figures(svg, column, y + 8.0, report) : y;
}

}  // namespace

std::string order_picture(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                          const OrderReport& report, bool figures) {
    const Layout layout = layout_of(job);
    const std::string title =
        nmk_files::base_name(report.options.file_name) + ": before and after ordering";
    nmk_draw::SvgDocument svg;
    const double bottom = draw_content(svg, layout, job, ordered, report, figures);
    return svg.str(layout.width, bottom + margin / 2, title);
}

}  // namespace nmk_order
