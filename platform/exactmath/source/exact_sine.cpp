#include <exactmath/exact_sine.h>

#include <cmath>
#include <limits>

#include "angle_reduction.h"
#include "double_double.h"

namespace nmk_exact {
namespace sine_steps {
namespace {

constexpr DoubleDouble one{1.0, 0.0};

struct WideSineAndCosine {
    DoubleDouble sine;
    DoubleDouble cosine;
};

// 1 - square / (a (a + 1)) (1 - square / ((a + 2) (a + 3)) (1 - ...)), in Horner's form. Terms for
// an angle of at most max_small_angle.
constexpr DoubleDouble series(DoubleDouble square, double a) {
    constexpr int terms = 14;
    DoubleDouble sum = one;
    for (int k = terms; k >= 0; --k) {
        const double n = a + 2.0 * k;
        sum = one - square * sum / DoubleDouble{n * (n + 1.0), 0.0};
    }
    return sum;
}

constexpr DoubleDouble wide_sine(DoubleDouble angle) { return series(angle * angle, 2.0) * angle; }

constexpr DoubleDouble wide_cosine(DoubleDouble angle) { return series(angle * angle, 1.0); }

// Of the sum of two angles.
constexpr WideSineAndCosine turned(const WideSineAndCosine& a, const WideSineAndCosine& b) {
    return {a.sine * b.cosine + a.cosine * b.sine, a.cosine * b.cosine - a.sine * b.sine};
}

constexpr TableEntry entry_of(const WideSineAndCosine& at) {
    const DoubleDouble rise = at.cosine;
    const DoubleDouble fall = -at.sine;
    const double head_of_rise = split(rise.high).high;
    const double head_of_fall = split(fall.high).high;
    return {{at.sine.high, at.cosine.high},
            {at.sine.low, at.cosine.low},
            {head_of_rise, head_of_fall},
            {(rise.high - head_of_rise) + rise.low, (fall.high - head_of_fall) + fall.low}};
}

constexpr std::array<TableEntry, table_size> entries_by_angle() {
    constexpr DoubleDouble angle_of_step{1.0 / table_steps_in_1, 0.0};
    const WideSineAndCosine step{wide_sine(angle_of_step), wide_cosine(angle_of_step)};
    WideSineAndCosine at{{0.0, 0.0}, one};
    std::array<TableEntry, table_size> all{};
    for (TableEntry& entry : all) {
        entry = entry_of(at);
        at = turned(at, step);
    }
    return all;
}

}  // namespace

constexpr std::array<TableEntry, table_size> table = entries_by_angle();

SineAndCosine wide_sine_and_cosine(double angle) {
    const DoubleDouble sine = wide_sine({angle, 0.0});
    const DoubleDouble cosine = wide_cosine({angle, 0.0});
    return {sine.high + sine.low, cosine.high + cosine.low};
}

}  // namespace sine_steps

namespace {

// The sine of a reduced angle that is turned on by a number of quarters.
double sine_of(const ReducedAngle& reduced, int quarters_more) {
    const int quarters = (reduced.quarters + quarters_more) & 3;
    const DoubleDouble size = quarters % 2 == 0 ? sine_steps::wide_sine(reduced.rest)
                                                : sine_steps::wide_cosine(reduced.rest);
    const double sine = size.high + size.low;
    return quarters < 2 ? sine : -sine;
}

}  // namespace

double exact_sin(double angle) {
    if (!std::isfinite(angle)) return std::numeric_limits<double>::quiet_NaN();
    const double size = std::fabs(angle);
    if (size > max_small_angle) return sine_of(reduced_angle(angle), 0);
    return std::copysign(exact_sine_and_cosine(size).sine, angle);
}

double exact_cos(double angle) {
    if (!std::isfinite(angle)) return std::numeric_limits<double>::quiet_NaN();
    const double size = std::fabs(angle);
    if (size > max_small_angle) return sine_of(reduced_angle(size), 1);
    return exact_sine_and_cosine(size).cosine;
}

}  // namespace nmk_exact
