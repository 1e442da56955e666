// nmkSolver: real roots of polynomials of degree two to four.
//
// Closed forms, then a few Laguerre steps for the roots that the closed form left doubtful. Near a
// double root the result is a sensible count of roots rather than noise: every limit that decides
// so is named, with its reason, at the top of the file that uses it.
//
// Polynomials are arrays of double in ascending powers: element i multiplies x to the power i.
// All operations are static, keep no state and allocate no memory; the caller owns every array.
// Coefficients that are not finite give a count of 0, and roots that overflow are not counted.
#pragma once

#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkSolver {
  public:
    /// Real roots of c0 + c1 x + c2 x^2, ascending.
    ///
    ///   coefficients  3 doubles, c0 c1 c2; any scale
    ///   roots         room for 2 doubles; only as many as are counted get written
    ///   returns       number of roots: 0, 1 (the equation is in effect linear) or 2
    ///
    /// A double root counts as two. All coefficients zero gives 0.
    /// Method: the stable form that never subtracts nearly equal numbers; Press et al., Numerical
    /// Recipes, 3rd ed., section 5.6.
    static int qadsol(double* coefficients, double* roots);

    /// Real roots of c0 + c1 x + c2 x^2 + c3 x^3, ascending, a double root twice.
    ///
    ///   coefficients  4 doubles, c0 to c3; a c3 below 1e-10 is dropped
    ///   roots         room for 3 doubles
    ///   returns       number of roots: 0 to 3; 0 also when the coefficients are too uneven
    ///
    /// Method: Cardano's formula, and its trigonometric form for three real roots.
    static int cubsol(double* coefficients, double* roots);

    /// The same, with a status for each root and doubtful roots polished.
    ///
    ///   coefficients  4 doubles, c0 to c3; only a c3 of exactly 0 is dropped
    ///   polish        not 0: polish every root, not only those that leave a residual above 1e-5
    ///   roots         room for 3 doubles; a root at zero comes last, out of order
    ///   status        3 ints, cleared on entry; all 1 when the coefficients are too uneven, else 0
    ///   returns       number of roots, 0 to 3
    static int cubsol(double* coefficients, int polish, double* roots, int* status);

    /// Real roots of c0 + c1 x + c2 x^2 + c3 x^3 + c4 x^4, in the order of finding.
    ///
    ///   coefficients  5 doubles, c0 to c4; any scale
    ///   polish        not 0: the roots are held to a residual of 1e-15 instead of 1e-5
    ///   roots         room for 4 doubles, cleared on entry
    ///   status        4 ints, cleared on entry; 2 in the slot behind the last root when c4 is 0
    ///                 (a root at infinity), 2 in all of them when all coefficients are 0
    ///   returns       number of roots, 0 to 4
    ///
    /// Method: one root by safeguarded Newton steps in a bracket, the rest from the deflated cubic.
    static int qarsol(double* coefficients, int polish, double* roots, int* status);

  private:
    /// Refines the first `count` of `roots` in place; those that turn out not to be roots
    /// are removed and lower `count`. `status` is 1 for each that is kept. Returns 1.
    static int laguer(double* coefficients, int degree, double* roots, int& count, int* status);

    static int polished_cubic(double* coefficients, int polish, double* roots, int count);
    // `a` holds the five coefficients of a quartic, ascending.
    static int quartic_with_bracket(double* a, int polish, double* roots);
    static int quartic_from_root(double* a, int polish, double* roots, double root);
    static int checked_quartic(double* a, int polish, double* roots, int count);
};
