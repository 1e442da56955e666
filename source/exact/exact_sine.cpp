#include "exact/exact_sine.h"

#include "exact/double_double.h"

namespace nmk_exact::sine_steps {

namespace {

constexpr Double_double one{1.0, 0.0};

constexpr Double_double negative(Double_double x) { return {-x.high, -x.low}; }

struct Wide_sine_and_cosine {
    Double_double sine;
    Double_double cosine;
};

// 1 - square / (a (a + 1)) (1 - square / ((a + 2) (a + 3)) (1 - ...)), in Horner's form. Terms for
// an angle of at most greatest_angle.
constexpr Double_double series(Double_double square, double a) {
    constexpr int terms = 14;
    Double_double sum = one;
    for (int k = terms; k >= 0; --k) {
        const double n = a + 2.0 * k;
        sum = one + negative(square * sum / Double_double{n * (n + 1.0), 0.0});
    }
    return sum;
}

constexpr Wide_sine_and_cosine wide_sine_and_cosine(double angle) {
    const Double_double square = exact_product(angle, angle);
    return {series(square, 2.0) * angle, series(square, 1.0)};
}

// Of the sum of two angles.
constexpr Wide_sine_and_cosine turned(const Wide_sine_and_cosine& a,
                                      const Wide_sine_and_cosine& b) {
    return {a.sine * b.cosine + a.cosine * b.sine, a.cosine * b.cosine + negative(a.sine * b.sine)};
}

constexpr Place place_of(const Wide_sine_and_cosine& at) {
    const Double_double rise = at.cosine;
    const Double_double fall = negative(at.sine);
    const double head_of_rise = split(rise.high).high;
    const double head_of_fall = split(fall.high).high;
    return {{at.sine.high, at.cosine.high},
            {at.sine.low, at.cosine.low},
            {head_of_rise, head_of_fall},
            {(rise.high - head_of_rise) + rise.low, (fall.high - head_of_fall) + fall.low}};
}

constexpr std::array<Place, places> places_in_turn() {
    const Wide_sine_and_cosine step = wide_sine_and_cosine(1.0 / places_in_one);
    Wide_sine_and_cosine at{{0.0, 0.0}, one};
    std::array<Place, places> all{};
    for (Place& place : all) {
        place = place_of(at);
        at = turned(at, step);
    }
    return all;
}

}  // namespace

constexpr std::array<Place, places> table = places_in_turn();

Sine_and_cosine slowly(double angle) {
    const Wide_sine_and_cosine wide = wide_sine_and_cosine(angle);
    return {wide.sine.high + wide.sine.low, wide.cosine.high + wide.cosine.low};
}

}  // namespace nmk_exact::sine_steps
