// order_legend.h: the legend of the picture, its scale bar and its table of figures.
//
// Each operation draws from a given y downwards and returns the y below which the next one may
// draw.
#pragma once

#include <vector>

#include "commands/order/order_table.h"
#include "commands/order/part_view.h"
#include "draw/legend_line.h"
#include "draw/svg_document.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

double draw_marks_legend(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top);

/// The tools with their colours and diameters; as many lines as they need.
double draw_tools_legend(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                         const std::vector<nmk_job::JobTool>& tools);

/// A bar of a round number of millimetres, its right end at the column's.
void draw_scale_bar(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    double pixels_per_mm);

double draw_figures(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    const OrderReport& report);

}  // namespace nmk_order
