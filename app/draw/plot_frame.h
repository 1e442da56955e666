// plot_frame.h: the axes of a plot: where a value stands, and the round numbers beside them.
#pragma once

#include <string>

#include "draw/svg_document.h"

namespace nmk_draw {

/// From the lowest value shown to the highest; not empty.
struct PlotRange {
    double low = 0.0;
    double high = 1.0;

    double span() const { return high - low; }
};

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

/// Six digits, which are enough for a drawing and hide the last of a sum that is not quite round.
std::string plot_number(double value);

/// Ground, rules at round numbers, the numbers, and the two axes where they are in sight.
void draw_plot_frame(SvgDocument& svg, const PlotFrame& frame);

}  // namespace nmk_draw
