// nmkRootSolve: a root or a stationary point of a function in a bracket.
//
// Newton steps alternate from the two ends, with the secant and bisection as fallbacks: fast on
// smooth functions, and never outside the bracket. At each point the derivative is evaluated first,
// then the value; exceptions of the function pass through. No state is kept between calls.
#pragma once

#include <maths/mlFunction.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkRootSolve {
  public:
    nmkRootSolve() = default;
    ~nmkRootSolve() = default;

    /// The root between `lo` and `hi`, to a bracket of 1e-10; an end that is a root is returned
    /// without a step.
    ///
    ///   ignored         has no effect: the tolerance of this form is fixed
    ///   converged       1, or 0 when the iterations ran out and the midpoint is returned
    static double bracketed_root_solve(const mlFunction& f, double lo, double hi, double ignored,
                                       int& converged, int max_iterations);

    /// The same for callers that have the values `f_lo`, `f_hi`, which differ in sign, and the
    /// slopes `d_lo`, `d_hi` at the ends. With ends of the same sign any point may be returned.
    static double bracketed_root_solve(const mlFunction& f, double lo, double hi, double f_lo,
                                       double f_hi, double d_lo, double d_hi, double tolerance,
                                       int& converged, int max_iterations);

    /// A zero of the derivative, whose values `d_lo` and `d_hi` differ in sign.
    ///
    ///   lo .. d_hi      the bracket, its values and slopes; narrowed on the way
    ///   x, f_x          the stationary point and the value there
    ///   tolerance       width of the bracket at which a last secant step is taken; below the
    ///                   spacing of doubles the search ends when the bracket no longer shrinks
    static void bracketed_extrema_finder(const mlFunction& f, double& lo, double& hi, double& f_lo,
                                         double& f_hi, double& d_lo, double& d_hi, double& x,
                                         double& f_x, double tolerance);

  protected:
    /// Evaluates at x and moves the end of its sign there. Returns 1 when finished, with `result`
    /// set: x is a root, or the new `width` is below `tolerance`. Otherwise returns 0.
    static int evaluate_and_update(const mlFunction& f, double tolerance, double x, double& lo,
                                   double& hi, double& d_lo, double& f_lo, double& d_hi,
                                   double& f_hi, double& width, double& result);
};
