// mesh_raster: triangles and lines drawn into samples with depths, and the image of them.

#include "commands/model/mesh_raster.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace nmk_model {

namespace {

constexpr Colour white = {255, 255, 255};
constexpr float farthest = -std::numeric_limits<float>::max();

/// The sample of the row or column below which no centre reaches `value`, within 0 and `size`.
int first_sample(double value, int size) {
    return static_cast<int>(std::clamp(std::ceil(value - 0.5), 0.0, static_cast<double>(size)));
}

/// The plane through three points: depth at (x, y).
struct DepthPlane {
    DepthPlane(const SamplePoint& a, const SamplePoint& b, const SamplePoint& c) : origin(a) {
        const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
        if (area == 0.0) return;
        by_x = ((b.z - a.z) * (c.y - a.y) - (c.z - a.z) * (b.y - a.y)) / area;
        by_y = ((b.x - a.x) * (c.z - a.z) - (c.x - a.x) * (b.z - a.z)) / area;
    }

    double at(double x, double y) const {
        return origin.z + by_x * (x - origin.x) + by_y * (y - origin.y);
    }

    SamplePoint origin;
    double by_x = 0.0;
    double by_y = 0.0;
};

/// The x at which the edge passes the height y, which is between its ends: the same to the last bit
/// for both triangles beside it, so that nothing shows through between them.
double passing(const SamplePoint& a, const SamplePoint& b, double y) {
    if (b.y < a.y) return passing(b, a, y);
    return a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y));
}

}  // namespace

/// The part of a row that a triangle covers, and its depths there.
struct MeshRaster::Span {
    int first, end;
    double depth, by_x;  // at the first sample, and from one sample to the next
    double nearest;      // of the triangle's corners, which rounding must not pass
};

MeshRaster::MeshRaster(int width, int height)
    : m_width(width * samples_a_pixel),
      m_height(height * samples_a_pixel),
      m_colours(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), white),
      m_depths(m_colours.size(), farthest) {}

std::int64_t MeshRaster::draw_triangle(const SamplePoint& a, const SamplePoint& b,
                                       const SamplePoint& c, Colour colour) {
    const DepthPlane plane(a, b, c);
    const double nearest = std::max({a.z, b.z, c.z});
    const int end = first_sample(std::max({a.y, b.y, c.y}), m_height);
    std::int64_t drawn = 0;
    ++m_work;
    for (int row = first_sample(std::min({a.y, b.y, c.y}), m_height); row < end; ++row) {
        const double y = row + 0.5;
        double low = std::numeric_limits<double>::max();
        double high = std::numeric_limits<double>::lowest();
        for (const auto& [from, to] : {std::pair(&a, &b), std::pair(&b, &c), std::pair(&c, &a)}) {
            if ((from->y <= y) == (to->y <= y)) continue;
            const double x = passing(*from, *to, y);
            low = std::min(low, x);
            high = std::max(high, x);
        }
        if (low > high) continue;
        const int first = first_sample(low, m_width);
        const Span span{first, first_sample(high, m_width), plane.at(first + 0.5, y), plane.by_x,
                        nearest};
        drawn += draw_row(row, span, colour);
    }
    return drawn;
}

int MeshRaster::draw_row(int y, const Span& span, Colour colour) {
    int drawn = 0;
    m_work += std::max(span.end - span.first, 0);
    for (int x = span.first; x < span.end; ++x) {
        const double depth = std::min(span.depth + span.by_x * (x - span.first), span.nearest);
        float& kept = m_depths[index(x, y)];
        if (depth > static_cast<double>(kept)) {
            kept = static_cast<float>(depth);
            m_colours[index(x, y)] = colour;
            ++drawn;
        }
    }
    return drawn;
}

std::int64_t MeshRaster::draw_line(const SamplePoint& from, const SamplePoint& to, const Pen& pen) {
    const double length = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
    const int steps = static_cast<int>(std::clamp(std::ceil(length), 1.0, 1e5));
    std::int64_t drawn = 0;
    for (int i = 0; i <= steps; ++i) {
        if (pen.dash > 0 && i / pen.dash % 2 != 0) continue;
        const double part = i / static_cast<double>(steps);
        drawn += draw_dot({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part,
                           from.z + (to.z - from.z) * part + pen.lift},
                          pen);
    }
    return drawn;
}

int MeshRaster::draw_dot(const SamplePoint& at, const Pen& pen) {
    const int left = first_sample(at.x - pen.width / 2.0, m_width);
    const int top = first_sample(at.y - pen.width / 2.0, m_height);
    int drawn = 0;
    for (int y = top; y < std::min(top + pen.width, m_height); ++y) {
        for (int x = left; x < std::min(left + pen.width, m_width); ++x) {
            const bool is_hidden = at.z < static_cast<double>(m_depths[index(x, y)]);
            if (is_hidden != pen.is_behind) continue;
            m_colours[index(x, y)] = pen.colour;
            ++drawn;
        }
    }
    m_work += pen.width;
    return drawn;
}

Colour MeshRaster::mean_of_pixel(int column, int row) const {
    std::array<int, 3> sum{};
    for (int y = row * samples_a_pixel; y < (row + 1) * samples_a_pixel; ++y) {
        for (int x = column * samples_a_pixel; x < (column + 1) * samples_a_pixel; ++x) {
            const Colour& colour = m_colours[index(x, y)];
            for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += colour[i];
        }
    }
    constexpr int count = samples_a_pixel * samples_a_pixel;
    Colour mean{};
    for (std::size_t i = 0; i < sum.size(); ++i) {
        mean[i] = static_cast<std::uint8_t>((sum[i] + count / 2) / count);
    }
    return mean;
}

nmk_draw::PixelImage MeshRaster::image() const {
    nmk_draw::PixelImage image{m_width / samples_a_pixel, m_height / samples_a_pixel, {}};
    image.rgb.reserve(static_cast<std::size_t>(image.width) *
                      static_cast<std::size_t>(image.height) * 3);
    for (int row = 0; row < image.height; ++row) {
        for (int column = 0; column < image.width; ++column) {
            const Colour mean = mean_of_pixel(column, row);
            image.rgb.insert(image.rgb.end(), mean.begin(), mean.end());
        }
    }
    return image;
}

}  // namespace nmk_model
