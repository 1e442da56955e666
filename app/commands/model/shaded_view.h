// shaded_view.h: the image of a model seen from a side, with its scale.
#pragma once

#include <optional>

#include "commands/model/drawn_edges.h"
#include "commands/model/mesh_raster.h"
#include "commands/model/view_side.h"
#include "commands/model/welded_mesh.h"
#include "draw/pixel_image.h"

class nmkProgressBreak;

namespace nmk_model {

// Base colours of the two sides of triangles, and colours of lines.
inline constexpr Colour outside_colour = {150, 172, 196};
inline constexpr Colour inside_colour = {222, 160, 84};
inline constexpr Colour sharp_edge_colour = {45, 58, 74};
inline constexpr Colour free_edge_colour = {214, 20, 30};
inline constexpr Colour hidden_edge_colour = {240, 130, 130};

struct ShadedView {
    nmk_draw::PixelImage image;
    double pixels_a_mm = 1.0;
    bool shows_sharp = false;      // some sharp edge is in sight
    bool shows_inside = false;     // some triangle shows its back
    bool has_hidden_free = false;  // some free edge is not whole in sight
};

/// The size of an image in pixels.
struct ImageSize {
    int width = 0;
    int height = 0;
};

/// The model as large as fits into the image, in its middle, shaded by the direction of each
/// triangle. Sharp and free edges are lines, free edges also, dashed, where they are hidden.
///
///   progress  receives numbers of triangles, and may request a stop
///   returns   nothing after such a request
std::optional<ShadedView> shaded_view(const WeldedMesh& mesh, const DrawnEdges& edges,
                                      ViewSide side, ImageSize largest, nmkProgressBreak& progress);

}  // namespace nmk_model
