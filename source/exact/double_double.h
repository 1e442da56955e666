// double_double.h: numbers of twice the precision of a double, as the sum of two doubles.
//
// Plain additions and multiplications only, so a result is the same to the last bit on every
// processor and can be worked out at compile time. Relative error of an operation about 2^-102.
// Method: Dekker, "A floating-point technique for extending the available precision", Numerische
// Mathematik 18 (1971).
//
// Made for values of moderate size: nothing here guards against overflow of an intermediate.
#pragma once

namespace nmk_exact {

struct Double_double {
    double high;
    double low;  // at most half a unit in the last place of `high`
};

/// The exact sum, for |a| >= |b|.
constexpr Double_double quick_sum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// The exact sum.
constexpr Double_double exact_sum(double a, double b) {
    const double sum = a + b;
    const double of_b = sum - a;
    return {sum, (a - (sum - of_b)) + (b - of_b)};
}

/// Two halves of a double, each short enough for its products to be exact.
constexpr Double_double split(double a) {
    const double shifted = 134217729.0 * a;  // 2^27 + 1
    const double high = shifted - (shifted - a);
    return {high, a - high};
}

/// The exact product.
constexpr Double_double exact_product(double a, double b) {
    const double product = a * b;
    const Double_double x = split(a);
    const Double_double y = split(b);
    const double rest =
        ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low;
    return {product, rest};
}

constexpr Double_double operator+(Double_double a, Double_double b) {
    const Double_double high = exact_sum(a.high, b.high);
    const Double_double low = exact_sum(a.low, b.low);
    const Double_double sum = quick_sum(high.high, high.low + low.high);
    return quick_sum(sum.high, sum.low + low.low);
}

constexpr Double_double operator*(Double_double a, Double_double b) {
    const Double_double product = exact_product(a.high, b.high);
    return quick_sum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

constexpr Double_double operator*(Double_double a, double b) { return a * Double_double{b, 0.0}; }

constexpr Double_double operator/(Double_double a, Double_double b) {
    const double first = a.high / b.high;
    const Double_double left = a + b * -first;
    const double second = left.high / b.high;
    const Double_double rest = left + b * -second;
    const Double_double quotient = quick_sum(first, second);
    return quotient + Double_double{rest.high / b.high, 0.0};
}

}  // namespace nmk_exact
