// real_roots.h: the real roots of a polynomial, counted and bracketed without rounding.
//
// The coefficients are taken as the exact values of their doubles. The polynomial is divided into
// factors without multiple roots, and the sign variations of the Sturm sequence of each factor at
// two points are the number of its roots between them (Basu, Pollack, Roy: Algorithms in Real
// Algebraic Geometry, 2nd ed., sections 2.2.2 and 10.1). All numbers are whole and exact, so every
// count is proved.
#pragma once

#include <cstddef>
#include <vector>

namespace nmk_solve {

/// The number of real roots.
struct RootCount {
    std::size_t distinct = 0;
    std::size_t with_multiplicity = 0;  // a double root counts as two
};

/// The number of real roots; none for the zero polynomial.
///
///   coefficients  in ascending powers, finite
RootCount count_real_roots(const std::vector<double>& coefficients);

/// A root, and the bracket that holds it: two doubles without a double between them, or one double
/// that is the root itself. A root beyond the largest double has an infinite end.
struct CertifiedRoot {
    double low = 0.0;
    double high = 0.0;
    double nearest = 0.0;  // that end of the bracket which is nearer, and finite
    std::size_t multiplicity = 1;
};

/// All real roots, ascending; none for the zero polynomial. Several roots may share a bracket.
std::vector<CertifiedRoot> certified_roots(const std::vector<double>& coefficients);

}  // namespace nmk_solve
