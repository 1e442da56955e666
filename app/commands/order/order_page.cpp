// order_page: one self-contained HTML page with before and after, which can be zoomed and played,
// and the figures.

#include "commands/order/order_page.h"

#include <utility>
#include <vector>

#include "commands/order/order_legend.h"
#include "commands/order/order_panel.h"
#include "commands/order/order_picture.h"
#include "commands/order/order_table.h"
#include "draw/html_controls.h"
#include "draw/html_frame.h"
#include "files/base_name.h"
#include "text/escaped_text.h"

namespace nmk_order {

namespace {

constexpr std::size_t max_rows = 200;  // of tools, in the table

std::string paragraph(const std::string& words) {
    return words.empty() ? "" : "<p>" + nmk_text::xml_text(words) + "</p>\n";
}

nmk_draw::HtmlPanel page_panel(const OrderDrawing& drawing, bool after, const OrderReport& report) {
    const std::string name = after ? "After" : "Before";
    const std::string figures = after ? after_figures(report) : before_figures(report);
    nmk_draw::SvgDocument svg;
    draw_panel(svg, drawing, after ? drawing.ordered.after : drawing.ordered.before, 0.0);
    return {name, figures,
            svg.element({drawing.panel.left, drawing.panel.top}, drawing.panel.width,
                        drawing.panel.height,
                        nmk_draw::panel_attributes(name + " ordering: " + figures))};
}

std::vector<nmk_draw::LayerControl> layer_controls(const OrderDrawing& drawing) {
    std::vector<nmk_draw::LayerControl> controls;
    for (const nmk_draw::LegendEntry& entry : tools_legend(drawing)) {
        const std::size_t group = controls.size();
        const bool is_rest = drawing.plan.tools.is_rest(group);
        controls.push_back({std::to_string(group),
                            is_rest ? "another tool" : drawing.job.tools[group].name, entry});
    }
    return controls;
}

std::string figure_table(const OrderReport& report) {
    FigureCells cells = shortened(figure_cells(report), max_rows);
    nmk_draw::HtmlTable table;
    table.headings = std::move(cells.headings);
    table.units = std::move(cells.units);
    table.total = std::move(cells.rows.back());
    cells.rows.pop_back();
    table.rows = std::move(cells.rows);
    return nmk_draw::html_table(table);
}

}  // namespace

std::string order_page(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                       const OrderReport& report) {
    const OrderDrawing drawing = order_drawing(job, ordered, report, {});
    std::string content = paragraph(report_summary(report));
    content += nmk_draw::html_toolbar(layer_controls(drawing), "move");
    content += nmk_draw::html_panels(
        {page_panel(drawing, false, report), page_panel(drawing, true, report)});
    content += nmk_draw::legend_list(marks_legend(drawing));
    const std::string note = omission_note(drawing.plan);
    content += paragraph(note.empty() ? "" : note + ".");
    content += figure_table(report) + paragraph(rapid_summary(report));
    if (report.job_times) {
        content += paragraph(job_time_text(*report.job_times));
    }
    for (const std::string& remark : report.notes) {
        content += paragraph(remark + ".");
    }
    const std::string name = nmk_files::base_name(report.options.file_name);
    return nmk_draw::html_frame(name + ": before and after ordering", name, content);
}

}  // namespace nmk_order
