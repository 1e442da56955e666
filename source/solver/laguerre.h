// laguerre: the refinement of one root by Laguerre's method.
//
// Acton, Numerical Methods That Work, chapter 7; the bound of the rounding error is Adams's, as in
// Press et al., Numerical Recipes, 3rd ed., section 9.5.
#pragma once

namespace nmk_solver {

/// Refines `root` in at most seven steps; false when it turns out not to be a root.
///
///   coefficients  degree + 1 doubles in ascending powers
///   root          where the steps start; on a failure it holds `on_entry` again
///   on_entry      the value that is put back when the steps made it worse
bool laguerre_refines(const double* coefficients, int degree, double& root, double on_entry);

}  // namespace nmk_solver
