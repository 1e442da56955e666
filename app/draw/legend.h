// legend.h: the entries of a legend, in a picture or as a list of a page.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "draw/svg_document.h"

namespace nmk_draw {

/// The horizontal range in which something may be drawn, in pixels.
struct PictureColumn {
    double left = 0.0;
    double right = 0.0;

    double width() const { return right - left; }
};

/// The text style of a legend.
inline constexpr const char* legend_text = "font-size=\"15\" fill=\"#3c4654\"";

/// A symbol and its meaning. `draw` gets the left end of the symbol, at the height of its middle;
/// the symbol is at most 20 pixels high.
struct LegendEntry {
    std::string words;
    double symbol_width = 16.0;
    std::function<void(SvgDocument&, SvgPoint)> draw;
};

using LegendEntries = std::vector<LegendEntry>;

/// Draws the entries from left to right and then on the next line; words too long for a line are
/// cut. Returns the y below which the next element may be drawn.
double draw_legend(SvgDocument& svg, PictureColumn column, double top,
                   const LegendEntries& entries);

/// The symbol as an SVG element of a page.
std::string legend_symbol(const LegendEntry& entry);

/// The entries as a list in HTML.
std::string legend_list(const LegendEntries& entries);

}  // namespace nmk_draw
