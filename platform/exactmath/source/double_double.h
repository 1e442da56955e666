// double_double.h: numbers of twice the precision of a double, as the sum of two doubles.
//
// Plain additions and multiplications only, so a result is the same to the last bit on every
// processor and can be computed at compile time. Relative error of an operation: about 2^-102.
// Method: Dekker, "A floating-point technique for extending the available precision", Numerische
// Mathematik 18 (1971).
//
// For values of moderate size: nothing here guards against overflow of an intermediate result.
#pragma once

namespace nmk_exact {

struct DoubleDouble {
    double high;
    double low;  // at most half a unit in the last place of `high`
};

/// The exact sum, for |a| >= |b| or a == 0.
constexpr DoubleDouble quick_sum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// The exact sum.
constexpr DoubleDouble exact_sum(double a, double b) {
    const double sum = a + b;
    const double of_b = sum - a;
    return {sum, (a - (sum - of_b)) + (b - of_b)};
}

/// Two halves of a double, each short enough for its products to be exact.
constexpr DoubleDouble split(double a) {
    const double shifted = 134217729.0 * a;  // 2^27 + 1
    const double high = shifted - (shifted - a);
    return {high, a - high};
}

/// The exact product.
constexpr DoubleDouble exact_product(double a, double b) {
    const double product = a * b;
    const DoubleDouble x = split(a);
    const DoubleDouble y = split(b);
    const double rest =
        ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low;
    return {product, rest};
}

constexpr DoubleDouble operator-(DoubleDouble a) { return {-a.high, -a.low}; }

constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble high = exact_sum(a.high, b.high);
    const DoubleDouble low = exact_sum(a.low, b.low);
    const DoubleDouble sum = quick_sum(high.high, high.low + low.high);
    return quick_sum(sum.high, sum.low + low.low);
}

constexpr DoubleDouble operator-(DoubleDouble a, DoubleDouble b) { return a + -b; }

constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = exact_product(a.high, b.high);
    return quick_sum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

constexpr DoubleDouble operator*(DoubleDouble a, double b) { return a * DoubleDouble{b, 0.0}; }

constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
    const double first = a.high / b.high;
    const DoubleDouble remainder = a + b * -first;
    const double second = remainder.high / b.high;
    const DoubleDouble rest = remainder + b * -second;
    const DoubleDouble quotient = quick_sum(first, second);
    return quotient + DoubleDouble{rest.high / b.high, 0.0};
}

}  // namespace nmk_exact
