// exact_polynomial.h: polynomials with whole coefficients of any size, computed without rounding.
//
// A double is a whole number times a power of two, so a polynomial with coefficients of double has
// the roots of one with whole coefficients. Polynomials are arrays in ascending powers whose last
// element is not zero; the empty array is the zero polynomial. Signs matter: an operation that
// divides by a common factor divides by a positive one.
//
// The header of the numbers is heavy: only exact_polynomial.cpp and real_roots.cpp include it.
#pragma once

#include <boost/multiprecision/cpp_int.hpp>

#include <vector>

namespace nmk_solve {

using Integer = boost::multiprecision::cpp_int;
using ExactPolynomial = std::vector<Integer>;

/// The number `mantissa` times 2 to the power `exponent`.
struct Dyadic {
    Integer mantissa;
    int exponent = 0;
};

/// The value of a finite double.
Dyadic dyadic_of(double value);

/// The number halfway between two finite doubles.
Dyadic midpoint(double low, double high);

/// The polynomial of finite coefficients, times a power of two.
ExactPolynomial exact_polynomial(const std::vector<double>& coefficients);

/// 0 for a constant, and for the zero polynomial.
std::size_t degree_of(const ExactPolynomial& polynomial);

ExactPolynomial exact_derivative(const ExactPolynomial& polynomial);

/// -1, 0 or 1, the sign of the value at x.
int sign_at(const ExactPolynomial& polynomial, const Dyadic& x);

/// The remainder of a / b times a positive number, without common factors; `b` is not zero.
ExactPolynomial remainder_of(ExactPolynomial a, const ExactPolynomial& b);

/// The greatest common divisor, without common factors; one of both is not zero.
ExactPolynomial common_divisor(ExactPolynomial a, ExactPolynomial b);

/// a / b, where b divides a and has no common factors.
ExactPolynomial quotient_of(ExactPolynomial a, const ExactPolynomial& b);

}  // namespace nmk_solve
