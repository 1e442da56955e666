// angle_elimination: the function of phi alone that is left when psi is eliminated.
//
// By Cramer's rule on (E1) and (E2), cos psi = A1 / A3 and sin psi = A2 / A3, so that a solution is
// a zero of F = A1^2 + A2^2 - A3^2 on the quarter circle.
#pragma once

#include "solver/angle_system.h"

namespace nmk_solver {

struct AngleElimination {
    const AngleSystem& s;
    double P;
    double Q;
    double W;

    explicit AngleElimination(const AngleSystem& system)
        : s(system),
          P(s.c * s.e * s.k - s.b * s.f),
          Q(s.c * s.d * s.k - s.a * s.f),
          W(s.a * s.e - s.b * s.d) {}

    double A1(const AngleDirection& phi) const {
        return -s.b * s.g * phi.sine - (P * phi.sine + s.c * s.e * s.h) * phi.cosine;
    }
    double A2(const AngleDirection& phi) const {
        return s.a * s.g * phi.sine + (Q * phi.sine + s.c * s.d * s.h) * phi.cosine;
    }
    double A3(const AngleDirection& phi) const { return (s.h + s.k * phi.sine) * phi.sine * W; }
    double F(const AngleDirection& phi) const {
        const double a1 = A1(phi);
        const double a2 = A2(phi);
        const double a3 = A3(phi);
        return a1 * a1 + a2 * a2 - a3 * a3;
    }
    /// The derivative of F by phi.
    double H(const AngleDirection& phi) const {
        const double Sf = phi.sine;
        const double Cf = phi.cosine;
        const double twice = 1.0 - 2.0 * Sf * Sf;
        return 2.0 * ((Sf * s.c * s.e * s.h - Cf * s.b * s.g - twice * P) * A1(phi) +
                      (Cf * s.a * s.g - Sf * s.c * s.d * s.h + twice * Q) * A2(phi) -
                      (2.0 * s.k * Sf * Cf + s.h * Cf) * W * A3(phi));
    }
};

/// An end of a bracket of phi.
struct AngleBracketEnd {
    AngleDirection phi;
    double value;               ///< F there
    bool is_candidate = false;  ///< an interior point of the other sign, maybe beside a double root
};

/// The phi between two ends at which F has different signs. Ends on every input.
AngleDirection refine_angle(const AngleElimination& elimination, AngleBracketEnd low,
                            AngleBracketEnd high);

}  // namespace nmk_solver
