// legend_line.h: the entries of a legend, from left to right and then on the next line.
#pragma once

#include <functional>
#include <string>

#include "draw/svg_document.h"

namespace nmk_draw {

/// The horizontal range in which something may be drawn, in pixels.
struct PictureColumn {
    double left = 0.0;
    double right = 0.0;
};

/// The text style of a legend.
inline constexpr const char* legend_text = "font-size=\"15\" fill=\"#3c4654\"";

class LegendLine {
  public:
    LegendLine(PictureColumn within, double top);

    /// The left end of an entry, at the height of its middle.
    SvgPoint next(double width);

    /// The y below which the next element may be drawn.
    double bottom() const;

  private:
    PictureColumn m_column;
    double m_x, m_y;
};

/// Draws an entry: `draw_symbol` at the left end of its symbol, and the words after it.
void draw_entry(SvgDocument& svg, LegendLine& line, const std::string& words, double symbol_width,
                const std::function<void(SvgPoint)>& draw_symbol);

}  // namespace nmk_draw
