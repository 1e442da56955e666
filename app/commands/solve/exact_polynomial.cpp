// exact_polynomial: polynomials with whole coefficients of any size, computed without rounding.

#include "commands/solve/exact_polynomial.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace nmk_solve {

namespace {

constexpr int mantissa_bits = std::numeric_limits<double>::digits;

void drop_leading_zeros(ExactPolynomial& polynomial) {
    while (!polynomial.empty() && polynomial.back() == 0) {
        polynomial.pop_back();
    }
}

/// Divides by the greatest factor that all coefficients have.
void drop_common_factor(ExactPolynomial& polynomial) {
    Integer factor = 0;
    for (const Integer& coefficient : polynomial) {
        factor = boost::multiprecision::gcd(factor, coefficient);
    }
    if (factor > 1) {
        for (Integer& coefficient : polynomial) {
            coefficient /= factor;
        }
    }
}

/// Subtracts b, times `scale` and a power of x, from a; both then end at the same power.
void subtract_at_the_end(ExactPolynomial& a, const ExactPolynomial& b, const Integer& scale) {
    const std::size_t shift = a.size() - b.size();
    for (std::size_t i = 0; i < b.size(); ++i) {
        a[shift + i] -= b[i] * scale;
    }
}

}  // namespace

Dyadic dyadic_of(double value) {
    Dyadic result;
    if (value == 0.0) {
        return result;
    }
    const double fraction = std::frexp(value, &result.exponent);
    auto mantissa = static_cast<std::int64_t>(std::ldexp(fraction, mantissa_bits));
    result.exponent -= mantissa_bits;
    while (mantissa % 2 == 0) {
        mantissa /= 2;
        ++result.exponent;
    }
    result.mantissa = mantissa;
    return result;
}

Dyadic midpoint(double low, double high) {
    Dyadic a = dyadic_of(low);
    Dyadic b = dyadic_of(high);
    const int exponent = std::min(a.exponent, b.exponent);
    a.mantissa <<= static_cast<unsigned>(a.exponent - exponent);
    b.mantissa <<= static_cast<unsigned>(b.exponent - exponent);
    return {a.mantissa + b.mantissa, exponent - 1};
}

ExactPolynomial exact_polynomial(const std::vector<double>& coefficients) {
    std::vector<Dyadic> values;
    int exponent = std::numeric_limits<int>::max();
    for (const double coefficient : coefficients) {
        values.push_back(dyadic_of(coefficient));
        if (coefficient != 0.0) {
            exponent = std::min(exponent, values.back().exponent);
        }
    }
    ExactPolynomial result;
    for (const Dyadic& value : values) {
        const int shift = value.mantissa == 0 ? 0 : value.exponent - exponent;
        result.push_back(value.mantissa << static_cast<unsigned>(shift));
    }
    drop_leading_zeros(result);
    return result;
}

std::size_t degree_of(const ExactPolynomial& polynomial) {
    return polynomial.empty() ? 0 : polynomial.size() - 1;
}

ExactPolynomial exact_derivative(const ExactPolynomial& polynomial) {
    ExactPolynomial derivative;
    for (std::size_t power = 1; power < polynomial.size(); ++power) {
        derivative.push_back(polynomial[power] * power);
    }
    return derivative;
}

int sign_at(const ExactPolynomial& polynomial, const Dyadic& x) {
    // Horner's rule. With a negative exponent all terms are multiplied by the denominator of x to
    // the power of the degree.
    Integer value = 0;
    const Integer whole =
        x.exponent > 0 ? Integer(x.mantissa << static_cast<unsigned>(x.exponent)) : x.mantissa;
    const unsigned bits = x.exponent < 0 ? static_cast<unsigned>(-x.exponent) : 0U;
    unsigned shift = 0;
    for (auto coefficient = polynomial.rbegin(); coefficient != polynomial.rend(); ++coefficient) {
        value = value * whole + (*coefficient << shift);
        shift += bits;
    }
    return value.sign();
}

ExactPolynomial remainder_of(ExactPolynomial a, const ExactPolynomial& b) {
    const Integer size = boost::multiprecision::abs(b.back());
    while (a.size() >= b.size()) {
        const Integer scale = b.back() > 0 ? a.back() : Integer(-a.back());
        for (Integer& coefficient : a) {
            coefficient *= size;
        }
        subtract_at_the_end(a, b, scale);
        drop_leading_zeros(a);
    }
    drop_common_factor(a);
    return a;
}

ExactPolynomial common_divisor(ExactPolynomial a, ExactPolynomial b) {
    while (!b.empty()) {
        a = remainder_of(std::move(a), b);
        std::swap(a, b);
    }
    drop_common_factor(a);
    return a;
}

ExactPolynomial quotient_of(ExactPolynomial a, const ExactPolynomial& b) {
    ExactPolynomial quotient(a.size() - b.size() + 1);
    for (std::size_t power = quotient.size(); power-- > 0;) {
        quotient[power] = a.back() / b.back();
        subtract_at_the_end(a, b, quotient[power]);
        a.pop_back();
    }
    return quotient;
}

}  // namespace nmk_solve
