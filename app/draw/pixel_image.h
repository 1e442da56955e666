// pixel_image.h: an image of pixels, and its PNG as text for an SVG drawing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nmk_draw {

struct PixelImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;  // row by row from the top, three bytes a pixel
};

/// The image as a PNG in the form of an address: "data:image/png;base64,...". Empty if there is no
/// memory for it.
std::string png_address(const PixelImage& image);

}  // namespace nmk_draw
