// pixel_image: an image of pixels, and its PNG as text for an SVG drawing.

#include "draw/pixel_image.h"

#include <png.h>

#include "text/base64.h"

namespace nmk_draw {

std::string png_address(const PixelImage& image) {
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = static_cast<png_uint_32>(image.width);
    description.height = static_cast<png_uint_32>(image.height);
    description.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(description);
    std::string bytes(size, '\0');
    const int is_written = png_image_write_to_memory(&description, bytes.data(), &size, 0,
                                                     image.rgb.data(), 0, nullptr);
    if (is_written == 0) return {};
    bytes.resize(size);
    return "data:image/png;base64," + nmk_text::base64_text(bytes);
}

}  // namespace nmk_draw
