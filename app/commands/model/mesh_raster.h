// mesh_raster.h: triangles and lines drawn into samples with depths, and the image of them.
//
// There are samples_a_pixel by samples_a_pixel samples in each pixel of the image, which is their
// mean. Places are in samples, x to the right, y downwards, z towards the viewer; of two triangles
// the nearer one is kept sample by sample, so triangles may cut each other. Everything outside is
// clipped.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "draw/pixel_image.h"

namespace nmk_model {

/// Red, green, blue, 0 to 255.
using Colour = std::array<std::uint8_t, 3>;

/// A place among the samples.
struct SamplePoint {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

class MeshRaster {
  public:
    static constexpr int samples_a_pixel = 2;

    /// The size of the image in pixels; all white.
    MeshRaster(int width, int height);

    /// Draws a triangle where it is nearer than what is there; returns the number of samples.
    std::int64_t draw_triangle(const SamplePoint& a, const SamplePoint& b, const SamplePoint& c,
                               Colour colour);

    /// How a line is drawn.
    struct Pen {
        Colour colour;
        int width;       // in samples
        double lift;     // how far it is moved towards the viewer, in samples
        bool is_behind;  // draws what is hidden in place of what is visible
        int dash = 0;    // length of dashes and of the gaps between them; 0 for a whole line
    };

    /// Draws the visible part of a line, or the hidden one; returns the number of samples. It
    /// leaves the depths as they are.
    std::int64_t draw_line(const SamplePoint& from, const SamplePoint& to, const Pen& pen);

    nmk_draw::PixelImage image() const;

    /// Number of samples that triangles and lines have touched so far, a measure of the work.
    std::int64_t work() const { return m_work; }

  private:
    struct Span;

    Colour mean_of_pixel(int column, int row) const;
    int draw_row(int y, const Span& span, Colour colour);
    int draw_dot(const SamplePoint& at, const Pen& pen);
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
               static_cast<std::size_t>(x);
    }

    int m_width, m_height;  // in samples
    std::vector<Colour> m_colours;
    std::vector<float> m_depths;
    std::int64_t m_work = 0;
};

}  // namespace nmk_model
