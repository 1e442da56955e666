// plot_frame.h: the axes of a plot, with ticks at round numbers.
#pragma once

#include <string>

#include "draw/axis_ticks.h"
#include "draw/svg_document.h"

namespace nmk_draw {

/// Maps values to pixels; y upwards.
struct PlotFrame {
    PlotRange x, y;
    SvgPoint corner;  // upper left
    double width = 1.0;
    double height = 1.0;

    SvgPoint at(double x_value, double y_value) const {
        return {corner.x + (x_value - x.low) / x.span() * width,
                corner.y + (y.high - y_value) / y.span() * height};
    }
};

/// The number with six digits: enough for a drawing, and rounding errors do not show.
std::string plot_number(double value);

/// Background, grid lines at round numbers, their labels, and the two axes if they are in range.
void draw_plot_frame(SvgDocument& svg, const PlotFrame& frame);

}  // namespace nmk_draw
