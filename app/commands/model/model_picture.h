// model_picture.h: a triangle model as an SVG drawing: its image, free edges, a scale and a legend.
#pragma once

#include <string>

#include "commands/model/model_figures.h"
#include "commands/model/shaded_view.h"
#include "draw/legend.h"

namespace nmk_model {

/// The drawing. Its size depends on the image alone, not on the number of triangles.
std::string model_picture(const ModelFigures& figures, const ShadedView& view, ViewSide side);

/// "2276 triangles, 119.68 x 79.68 x 46 mm"
std::string model_summary(const ModelFigures& figures);

/// "not closed: 22 free edges"; "closed" without a fault.
std::string fault_summary(const ModelFigures& figures);

/// What a legend lists beside the outside.
struct LegendParts {
    bool sharp = false;
    bool inside = false;
    bool free = false;
    bool hidden_free = false;
};

/// The meaning of the colours.
nmk_draw::LegendEntries model_legend(const LegendParts& parts);

/// The image has so many pixels for each pixel of the drawing, for screens that show them.
inline constexpr int image_fineness = 2;

/// The largest size of the image.
inline constexpr ImageSize largest_image = {1000 * image_fineness, 720 * image_fineness};

}  // namespace nmk_model
