// fitted_text.h: the width of a text in a drawing, and texts cut to a width.
//
// The font of the viewer is unknown, so widths are those of the widest of the fonts that a drawing
// asks for: a little too wide rather than too narrow.
#pragma once

#include <string>
#include <string_view>

namespace nmk_draw {

/// The width of a text in UTF-8 at this font size, in pixels. Bold letters are a tenth wider.
double text_width(std::string_view words, double font_size);

/// The text, or as much of its beginning as fits with an ellipsis into the width.
std::string fitted_text(std::string_view words, double font_size, double width);

}  // namespace nmk_draw
