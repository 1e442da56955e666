// nmkAngleSolver: angles that satisfy one or two trigonometric equations.
//
// An angle is returned as its cosine and its sine, without the rounding of an inverse function. In
// the systems of two angles, phi is held to the first quadrant, psi is free, and the radius R = h +
// k sin(phi) must not be negative.
//
// Every solver returns the number of solutions, 0 for none, and has a second form that fills one
// array of giAngle for each angle. Arrays belong to the caller and need room for the largest count;
// slots behind the count are left as they are. All operations are static and allocate nothing;
// parameters that are not finite give a count of 0, and solutions that overflow are not counted.
#pragma once

#include <geometry/giAngle.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkAngleSolver {
  public:
    /// a cos t + b sin t = c. At most 2 solutions; a c beyond the amplitude by less than about half
    /// a part in 100000 still gives the tangent solution.
    static int solve_angles1(double a, double b, double c, double* cosines, double* sines);
    static int solve_angles1(double a, double b, double c, giAngle* const angles);

    /// a cos^2 t + b cos t sin t + c sin^2 t + d cos t + e sin t + f = 0. At most 4 solutions, in
    /// the order in which the quartic in the tangent of the half angle gives its roots; all zero
    /// gives the one solution of cosine -1.
    static int solve_angles2(double a, double b, double c, double d, double e, double f,
                             double* cosines, double* sines);
    static int solve_angles2(double a, double b, double c, double d, double e, double f,
                             giAngle* const angles);

    /// sin phi (a cos psi + b sin psi) + c cos phi = 0 and
    /// f cos phi + (d cos psi + e sin psi)(h + k sin phi) = g. At most 2 solutions.
    ///
    /// With f and g both zero the last slot counted may not have been filled; a giAngle form leaves
    /// such a slot as it is.
    static int solve_angles3(double a, double b, double c, double d, double e, double f, double g,
                             double h, double k, double* cos_phi, double* sin_phi, double* cos_psi,
                             double* sin_psi);
    static int solve_angles3(double a, double b, double c, double d, double e, double f, double g,
                             double h, double k, giAngle* const phi, giAngle* const psi);

    /// sin phi (a cos psi + b sin psi) + c cos phi = 0 and
    /// (h + k sin phi)(a sin psi - b cos psi) = d. At most 4 solutions.
    static int solve_angles4(double a, double b, double c, double d, double h, double k,
                             double* cos_phi, double* sin_phi, double* cos_psi, double* sin_psi);
    static int solve_angles4(double a, double b, double c, double d, double h, double k,
                             giAngle* const phi, giAngle* const psi);

    /// One solution of the system of solve_angles4, the one reached from phi at 90 degrees, for
    /// the price of one descent. When the descent fails: all that solve_angles4 gives, up to 4.
    static int solve_angles4_one_solution(double a, double b, double c, double d, double h,
                                          double k, double* cos_phi, double* sin_phi,
                                          double* cos_psi, double* sin_psi);
    static int solve_angles4_one_solution(double a, double b, double c, double d, double h,
                                          double k, giAngle* const phi, giAngle* const psi);

    /// (h + k sin phi)(a cos psi + b sin psi) = c and
    /// (h + k sin phi)(a sin psi - b cos psi) + d cos phi = e. At most 2 solutions.
    static int solve_angles5(double a, double b, double c, double d, double e, double h, double k,
                             double* cos_phi, double* sin_phi, double* cos_psi, double* sin_psi);
    static int solve_angles5(double a, double b, double c, double d, double e, double h, double k,
                             giAngle* const phi, giAngle* const psi);

    /// The system of solve_angles4 with h zero, in closed form. At most 2 solutions.
    static int solve_angles6(double a, double b, double c, double d, double k, double* cos_phi,
                             double* sin_phi, double* cos_psi, double* sin_psi);
    static int solve_angles6(double a, double b, double c, double d, double k, giAngle* const phi,
                             giAngle* const psi);

  private:
    static int solve_angles4_quartic(double a, double b, double c, double d, double h, double k,
                                     double* cosines, double* sines);
    static int solve_angles4_iteratively(double a, double b, double c, double d, double h, double k,
                                         double& cos_phi, double& sin_phi, double& cos_psi,
                                         double& sin_psi);
    static int solve_angles4_quadratic(double d, double h, double k, double& cosine, double& sine);
    static int solve_angles4_quartic_iteratively(double c, double d, double h, double k,
                                                 double& cosine, double& sine);
    static int quartic_laguer(double* const a, double& x);

    /// The value, held to the range -1 to 1.
    static double clip_to_range(double value);

    static int solve_angles3_degenerate_case(double a, double b, double c, double d, double e,
                                             double h, double k, double* cos_phi, double* sin_phi,
                                             double* cos_psi, double* sin_psi);
    static int solve_angles3_first_method(const double& a, const double& b, const double& c,
                                          const double& d, const double& e, const double& f,
                                          const double& g, const double& h, const double& k,
                                          const double& sa, const double& sr,
                                          double* const& cos_phi, double* const& sin_phi,
                                          double* const& cos_psi, double* const& sin_psi);
    static int solve_angles3_second_method(const double& a, const double& b, const double& c,
                                           const double& d, const double& e, const double& f,
                                           const double& g, const double& h, const double& k,
                                           const double& sa, const double& sr,
                                           double* const& cos_phi, double* const& sin_phi,
                                           double* const& cos_psi, double* const& sin_psi);
};
