#include <exactmath/exact_arctangent.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "wide_power.h"

namespace nmk_exact {
namespace {

using arctangent_steps::steps_in_1;
using arctangent_steps::TableEntry;

constexpr DoubleDouble one{1.0, 0.0};
constexpr DoubleDouble zero{0.0, 0.0};
constexpr DoubleDouble half_pi{0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
constexpr DoubleDouble pi{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
constexpr double quarter_pi = half_pi.high / 2.0;
constexpr double three_quarters_of_pi = 0x1.2d97c7f3321d2p+1;

// Within this distance from a step, 1 / 128, the series below are complete.
constexpr int terms_of_wide_series = 9;

// Sides that differ by more binary places than this are at right angles, or one is nothing.
constexpr int places_apart = 70;

constexpr DoubleDouble arctangent_series(DoubleDouble z, int terms) {
    const DoubleDouble square = z * z;
    DoubleDouble sum = zero;
    for (int k = terms; k >= 0; --k) {
        sum = one / DoubleDouble{2.0 * k + 1.0, 0.0} - sum * square;
    }
    return sum * z;
}

// Euler's series, whose terms are positive: for the multiples of 1/8 up to 1.
constexpr DoubleDouble arctangent_of_eighths(int eighths) {
    const double x = eighths / 8.0;
    const DoubleDouble ratio = DoubleDouble{x * x, 0.0} / DoubleDouble{1.0 + x * x, 0.0};
    DoubleDouble sum = one;
    for (int n = 110; n >= 1; --n) {
        sum = one + sum * ratio * (2.0 * n) / DoubleDouble{2.0 * n + 1.0, 0.0};
    }
    return sum * x / DoubleDouble{1.0 + x * x, 0.0};
}

constexpr auto arctangents = [] {
    std::array<DoubleDouble, 9> of_eighths{};
    for (int k = 0; k <= 8; ++k) {
        of_eighths[static_cast<std::size_t>(k)] = arctangent_of_eighths(k);
    }
    std::array<DoubleDouble, steps_in_1 + 1> table{};
    for (int j = 0; j <= steps_in_1; ++j) {
        const double x = j / double{steps_in_1};
        const int eighths = (j + 8) / 16;
        const double from = eighths / 8.0;
        const DoubleDouble beyond = DoubleDouble{x - from, 0.0} / DoubleDouble{1.0 + x * from, 0.0};
        table[static_cast<std::size_t>(j)] =
            of_eighths[static_cast<std::size_t>(eighths)] + arctangent_series(beyond, 15);
    }
    return table;
}();

// `ratio` is positive, so that adding 0.5 and truncating rounds it.
// NOLINTNEXTLINE(bugprone-incorrect-roundings)
int nearest_step(double ratio) { return static_cast<int>(ratio * steps_in_1 + 0.5); }

// The arctangent of y / x, for 0 <= y <= x, to about 98 bits, also for sides of more digits than a
// double has.
DoubleDouble wide_angle(DoubleDouble y, DoubleDouble x) {
    const int j = nearest_step(y.high / x.high);
    const DoubleDouble step{j / double{steps_in_1}, 0.0};
    const DoubleDouble z = (y - step * x) / (x + step * y);
    return arctangents[static_cast<std::size_t>(j)] + arctangent_series(z, terms_of_wide_series);
}

// Which eighth of the turn a direction lies in, and how its angle follows from that in the first.
struct Octant {
    bool is_steep;
    bool points_left;

    DoubleDouble angle(DoubleDouble first) const {
        if (is_steep) return points_left ? half_pi + first : half_pi - first;
        return points_left ? pi - first : first;
    }
};

double right_angle_or_none(const Octant& octant, double y, double x) {
    if (octant.is_steep) return half_pi.high;
    if (octant.points_left) return pi.high;
    // Less than y / x by a part in 2^140, which decides where the quotient is half-way between two
    // subnormals.
    int y_exponent = 0;
    int x_exponent = 0;
    const double high = std::frexp(y, &y_exponent);
    const double low = std::frexp(x, &x_exponent);
    const DoubleDouble quotient = DoubleDouble{high, 0.0} / DoubleDouble{low, 0.0};
    return rounded(
        {{quotient.high, quotient.low - quotient.high * 0x1p-120}, y_exponent - x_exponent});
}

// The size of the angle for finite sides above zero of any size.
double angle_of_any_size(double y, double x, bool points_left) {
    const Octant octant{y > x, points_left};
    const int places = std::ilogb(y) - std::ilogb(x);
    if (places > places_apart || places < -places_apart) return right_angle_or_none(octant, y, x);
    const int scale = -std::ilogb(octant.is_steep ? y : x);
    const DoubleDouble scaled_y{std::ldexp(y, scale), 0.0};
    const DoubleDouble scaled_x{std::ldexp(x, scale), 0.0};
    const DoubleDouble first =
        octant.is_steep ? wide_angle(scaled_x, scaled_y) : wide_angle(scaled_y, scaled_x);
    const DoubleDouble angle = octant.angle(first);
    return angle.high + angle.low;
}

double angle_of_infinities(double y, double x) {
    if (std::isinf(y) && std::isinf(x)) return x > 0.0 ? quarter_pi : three_quarters_of_pi;
    if (std::isinf(y)) return half_pi.high;
    return x > 0.0 ? 0.0 : pi.high;
}

// The other side of a right-angled triangle with one side x and a long side of 1.
DoubleDouble other_side(double x) {
    const DoubleDouble square = exact_sum(1.0, -x) * exact_sum(1.0, x);
    if (square.high == 0.0) return zero;
    const double root = std::sqrt(square.high);
    const DoubleDouble remainder = square - exact_product(root, root);
    return quick_sum(root, remainder.high / (2.0 * root));
}

DoubleDouble angle_in_quadrant(DoubleDouble y, DoubleDouble x) {
    return y.high > x.high ? half_pi - wide_angle(x, y) : wide_angle(y, x);
}

// The slope 1 / (1 + x^2) at a distance d from the step: its Taylor coefficients divided by those
// of 1 + (step + d)^2 one after the other, each over the power that it has in the integral.
constexpr TableEntry entry_of(int j) {
    const double step = j / double{steps_in_1};
    const DoubleDouble angle = arctangents[static_cast<std::size_t>(j)];
    const double square = 1.0 + step * step;
    const DoubleDouble slope = one / DoubleDouble{square, 0.0};
    const double slope_head = split(slope.high).high;
    TableEntry entry{angle.high, angle.low, slope_head, (slope.high - slope_head) + slope.low, {}};
    double before_last = 0.0;
    double last = slope.high;
    for (std::size_t i = 0; i < entry.bends.size(); ++i) {
        const double next = -(2.0 * step * last + before_last) / square;
        entry.bends[i] = next / static_cast<double>(i + 2);
        before_last = last;
        last = next;
    }
    return entry;
}

constexpr auto entries_by_step = [] {
    std::array<TableEntry, steps_in_1 + 1> all{};
    for (int j = 0; j <= steps_in_1; ++j) all[static_cast<std::size_t>(j)] = entry_of(j);
    return all;
}();

}  // namespace

const std::array<TableEntry, steps_in_1 + 1> arctangent_steps::table = entries_by_step;

const std::array<arctangent_steps::OctantBase, 4> arctangent_steps::octants = {
    {{0.0, 0.0, 1.0, 0.0},
     {half_pi.high, half_pi.low, -1.0, 0x1p-90},
     {pi.high, pi.low, -1.0, 0x1p-90},
     {half_pi.high, half_pi.low, 1.0, 0x1p-90}}};

double arctangent_steps::wide_atan2(double y, double x) {
    if (std::isnan(y) || std::isnan(x)) return std::numeric_limits<double>::quiet_NaN();
    const double height = std::fabs(y);
    const double width = std::fabs(x);
    const bool points_left = std::signbit(x);
    if (height == 0.0) return std::copysign(points_left ? pi.high : 0.0, y);
    if (width == 0.0) return std::copysign(half_pi.high, y);
    if (std::isinf(height) || std::isinf(width))
        return std::copysign(angle_of_infinities(height, x), y);
    return std::copysign(angle_of_any_size(height, width, points_left), y);
}

double exact_acos(double x) {
    if (!(std::fabs(x) <= 1.0)) return std::numeric_limits<double>::quiet_NaN();
    const DoubleDouble first = angle_in_quadrant(other_side(x), {std::fabs(x), 0.0});
    const DoubleDouble angle = x < 0.0 ? pi - first : first;
    return angle.high + angle.low;
}

double exact_asin(double x) {
    if (!(std::fabs(x) <= 1.0)) return std::numeric_limits<double>::quiet_NaN();
    // Below, the angle exceeds its sine by less than half a unit in the last place.
    if (std::fabs(x) < 0x1p-30) return x;
    const DoubleDouble angle = angle_in_quadrant({std::fabs(x), 0.0}, other_side(x));
    return std::copysign(angle.high + angle.low, x);
}

}  // namespace nmk_exact
