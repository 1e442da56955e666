// order_picture: before and after side by side at one scale, a legend, and the figures below.

#include "commands/order/order_picture.h"

#include "commands/order/length_texts.h"
#include "commands/order/order_legend.h"
#include "commands/order/order_panel.h"
#include "draw/fitted_text.h"
#include "draw/svg_document.h"
#include "files/base_name.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double gap = 36.0;  // between the panels
constexpr double heading_height = 120.0;
constexpr double scale_bar_width = 260.0;

double width_of(const OrderDrawing& drawing) { return 2 * (margin + drawing.panel.width) + gap; }

void draw_heading(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column,
                  const OrderReport& report) {
    const std::string name = nmk_files::base_name(report.options.file_name);
    svg.text({column.left, 44.0}, nmk_draw::fitted_text(name, 26.0 * 1.1, column.width()),
             "font-size=\"26\" font-weight=\"700\" fill=\"#1f2933\"");
    svg.text({column.left, 70.0},
             nmk_draw::fitted_text(report_summary(report), 16.0, column.width()),
             "font-size=\"16\" fill=\"#6b7785\"");
    svg.line({column.left, 82.0}, {column.right, 82.0}, "stroke=\"#e3e7eb\"");
}

void draw_half(nmk_draw::SvgDocument& svg, const OrderDrawing& drawing, bool after,
               const std::string& figures) {
    const double right = after ? drawing.panel.width + gap : 0.0;
    const double left = drawing.panel.left + right;
    const double y = heading_height - 13.0;
    svg.text({left, y}, after ? "After" : "Before",
             "font-size=\"20\" font-weight=\"600\" fill=\"#1f2933\"");
    svg.text({left + drawing.panel.width, y}, figures,
             "font-size=\"17\" fill=\"#3c4654\" text-anchor=\"end\"");
    draw_panel(svg, drawing, after ? drawing.ordered.after : drawing.ordered.before, right);
}

/// What is below the panels; returns its lower edge.
double draw_foot(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                 const OrderDrawing& drawing, const OrderReport& report) {
    draw_scale_bar(svg, column, top, drawing);
    const nmk_draw::PictureColumn beside_bar{column.left, column.right - scale_bar_width};
    double y = nmk_draw::draw_legend(svg, beside_bar, top, marks_legend(drawing));
    y = nmk_draw::draw_legend(svg, column, y, tools_legend(drawing));
    const std::string note = omission_note(drawing.plan);
    if (!note.empty()) {
        svg.text({column.left, y + 17.0}, note + ".", nmk_draw::legend_text);
        y += 27.0;
    }
    return draw_figures(svg, column, y + 8.0, report);
}

/// "travel 120.5 mm", with the time where the order was made for it.
std::string figures_text(const TravelFigures& figures, const OrderReport& report) {
    const nmkTravelMeasure kind = report.request.measure.kind;
    const LengthTexts text(report.file_units);
    const std::string travel = "travel " + text.travel_with_unit(shown_travel(figures, kind));
    return kind == nmkTravelMeasure::time
               ? travel + ", " + nmk_text::fixed_number(figures.seconds, 1) + " s"
               : travel;
}

}  // namespace

std::string order_picture(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                          const OrderReport& report) {
    const OrderDrawing drawing = order_drawing(job, ordered, report, {margin, heading_height});
    const nmk_draw::PictureColumn column{margin, width_of(drawing) - margin};
    nmk_draw::SvgDocument svg;
    draw_heading(svg, column, report);
    draw_half(svg, drawing, false, before_figures(report));
    draw_half(svg, drawing, true, after_figures(report));
    const double top = heading_height + drawing.panel.height + 14.0;
    const double bottom = draw_foot(svg, column, top, drawing, report);
    return svg.str(width_of(drawing), bottom + margin / 2,
                   nmk_files::base_name(report.options.file_name) + ": before and after ordering");
}

std::string before_figures(const OrderReport& report) {
    return figures_text(report.figures.total.before, report);
}

std::string after_figures(const OrderReport& report) {
    const ToolFigures& total = report.figures.total;
    return figures_text(total.after, report) + ", saved " +
           nmk_text::fixed_number(saved_percent(total, report.request.measure.kind), 1) + " %";
}

}  // namespace nmk_order
