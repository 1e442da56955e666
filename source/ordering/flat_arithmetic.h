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
using FlatPoint = std::array<double, dimensions>;

/// The square of the distance between two points.
template <int dimensions>
double square_between(const FlatPoint<dimensions>& a, const FlatPoint<dimensions>& b) {
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
double length_between(const FlatPoint<dimensions>& a, const FlatPoint<dimensions>& b) {
    return std::sqrt(square_between<dimensions>(a, b));
}

template <int dimensions>
FlatPoint<dimensions> flat(const giPoint3& point) {
    if constexpr (dimensions == 3) {
        return {point.x, point.y, point.z};
    } else {
        return {point.x, point.y};
    }
}

/// Whether every point is at the height `z`, so that heights add exactly nothing to a distance.
inline bool are_at_height(const giPoint3coPageArr& points, int count, double z) {
    if (!std::isfinite(z)) return false;
    for (int k = 0; k < count; ++k) {
        if (points[k].z != z) return false;
    }
    return true;
}

/// Different numbers that a generator draws.
constexpr int draws = mlRandom::max_drawn + 1;

/// The remainder of a draw by a fixed divisor, without a division.
///
/// Method: Lemire, Kaser and Kurz, "Faster remainder by direct computation", Software: Practice
/// and Experience 49 (2019); exact for 15 bits by up to 15 bits.
class DrawRemainder {
  public:
    explicit DrawRemainder(int divisor)
        : m_divisor(static_cast<std::uint32_t>(std::min(divisor, draws))),
          m_reciprocal(reciprocal_of(m_divisor)) {}

    int of(int draw) const { return of(draw, m_divisor, m_reciprocal); }

    /// The same for a divisor (1 to 32768) whose reciprocal the caller keeps.
    static int of(int draw, std::uint32_t divisor, std::uint32_t reciprocal) {
        const std::uint32_t fraction = reciprocal * static_cast<std::uint32_t>(draw);
        return static_cast<int>((static_cast<std::uint64_t>(fraction) * divisor) >> 32);
    }
    static std::uint32_t reciprocal_of(std::uint32_t divisor) { return 0xFFFFFFFFU / divisor + 1U; }

  private:
    std::uint32_t m_divisor;
    std::uint32_t m_reciprocal;  // 2^32 over the divisor, rounded up
};

/// Steps of the generator taken at once: the word after `count` steps is word * factor + term.
struct GeneratorLeap {
    std::uint32_t factor = 1;
    std::uint32_t term = 0;

    explicit constexpr GeneratorLeap(int count) {
        for (int k = 0; k < count; ++k) {
            factor *= mlRandom::multiplier;
            term = term * mlRandom::multiplier + mlRandom::increment;
        }
    }
    constexpr std::uint32_t from(std::uint32_t word) const { return word * factor + term; }
};

inline constexpr GeneratorLeap one_step{1};
inline constexpr GeneratorLeap two_steps{2};
inline constexpr GeneratorLeap three_steps{3};

}  // namespace nmk_ordering
