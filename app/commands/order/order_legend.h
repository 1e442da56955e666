// order_legend.h: the legend of the picture, its scale bar and its table of figures.
//
// Each operation draws from a given y downwards and returns the y below which the next one may
// draw.
#pragma once

#include <vector>

#include "commands/order/order_panel.h"
#include "commands/order/order_table.h"
#include "draw/legend.h"
#include "draw/svg_document.h"

namespace nmk_order {

/// What the marks and lines of the panels mean, only those that are drawn.
nmk_draw::LegendEntries marks_legend(const OrderDrawing& drawing);

/// The tools with their colours and diameters, one entry for each group of the drawing.
nmk_draw::LegendEntries tools_legend(const OrderDrawing& drawing);

/// A bar of a round length in the unit of the file, its right end at the column's.
void draw_scale_bar(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    const OrderDrawing& drawing);

double draw_figures(nmk_draw::SvgDocument& svg, nmk_draw::PictureColumn column, double top,
                    const OrderReport& report);

/// The cells with the rows of at most so many tools; those of the others are replaced by one row
/// that counts them.
FigureCells shortened(FigureCells cells, std::size_t max_tools);

}  // namespace nmk_order
