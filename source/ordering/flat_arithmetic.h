// flat_arithmetic.h: points and draws for the loops that run on flat arrays.
//
// Every result is the one that the plain way gives, to the last bit: squares are summed in the
// same order, and remainders are exact for the 15 bits that a generator draws.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <maths/mlRandom.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace nmk_ordering {

template <int dimensions>
using Flat_point = std::array<double, dimensions>;

/// The square of the distance of two points.
template <int dimensions>
double square_between(const Flat_point<dimensions>& a, const Flat_point<dimensions>& b) {
    const double dx = a[0] - b[0];
    const double dy = a[1] - b[1];
    double sum = dx * dx + dy * dy;
    if constexpr (dimensions == 3) {
        const double dz = a[2] - b[2];
        sum = sum + dz * dz;
    }
    return sum;
}

template <int dimensions>
double length_between(const Flat_point<dimensions>& a, const Flat_point<dimensions>& b) {
    return std::sqrt(square_between<dimensions>(a, b));
}

template <int dimensions>
Flat_point<dimensions> flat(const giPoint3& point) {
    if constexpr (dimensions == 3) {
        return {point.x, point.y, point.z};
    } else {
        return {point.x, point.y};
    }
}

/// Whether every point lies at the height `z`, so that heights add exactly nothing to a distance.
inline bool lie_at_height(const giPoint3coPageArr& points, int count, double z) {
    if (!std::isfinite(z)) return false;
    for (int k = 0; k < count; ++k) {
        if (points[k].z != z) return false;
    }
    return true;
}

/// The remainder of a draw by a fixed divisor, without a division.
///
/// Method: Lemire, Kaser and Kurz, "Faster remainder by direct computation", Software: Practice
/// and Experience 49 (2019); exact for 15 bits by up to 15 bits.
class Draw_remainder {
  public:
    explicit Draw_remainder(int divisor)
        : by(static_cast<std::uint32_t>(std::min(divisor, 32768))), magic(0xFFFFFFFFU / by + 1U) {}

    int of(std::uint32_t draw) const { return of(draw, by, magic); }

    static int of(std::uint32_t draw, std::uint32_t by, std::uint32_t magic) {
        const std::uint32_t fraction = magic * draw;
        return static_cast<int>((static_cast<std::uint64_t>(fraction) * by) >> 32);
    }

  private:
    std::uint32_t by;
    std::uint32_t magic;
};

/// Steps of the generator taken at once: the word after `count` steps is word * factor + term.
struct Generator_leap {
    std::uint32_t factor = 1;
    std::uint32_t term = 0;

    explicit constexpr Generator_leap(int count) {
        for (int k = 0; k < count; ++k) {
            factor *= 214013U;
            term = term * 214013U + 2531011U;
        }
    }
    constexpr std::uint32_t from(std::uint32_t word) const { return word * factor + term; }
};

/// The 15 bits that a word draws.
constexpr std::uint32_t drawn(std::uint32_t word) { return (word >> 16) & 0x7FFFU; }

}  // namespace nmk_ordering
