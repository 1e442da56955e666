// angle_system: the scaled system of two angles, and the slots for its solutions.
//
//   (E1) sin phi (a cos psi + b sin psi) + c cos phi = 0
//   (E2) f cos phi + (d cos psi + e sin psi)(h + k sin phi) = g
//
// (d, e) has length 1 or 0; sa and sr are what the two equations were divided by.
#pragma once

#include <algorithm>
#include <cmath>

namespace nmk_solver {

/// An angle as cosine and sine.
struct AngleDirection {
    double cosine = 1.0;
    double sine = 0.0;
};

/// A solution: phi and psi.
struct AnglePair {
    AngleDirection phi;
    AngleDirection psi;
};

struct AngleSystem {
    double a, b, c, d, e, f, g, h, k, sa, sr;

    double radius(double sin_phi) const { return sin_phi * k + h; }
    double along_reference(const AngleDirection& psi) const {
        return a * psi.cosine + b * psi.sine;
    }
    double along_second(const AngleDirection& psi) const { return d * psi.cosine + e * psi.sine; }
};

/// The caller's arrays.
struct AngleSlots {
    double* cos_phi;
    double* sin_phi;
    double* cos_psi;
    double* sin_psi;

    void store(int slot, const AnglePair& solution) const {
        cos_phi[slot] = solution.phi.cosine;
        sin_phi[slot] = solution.phi.sine;
        cos_psi[slot] = solution.psi.cosine;
        sin_psi[slot] = solution.psi.sine;
    }
};

/// The cosine for a sine, or the sine for a cosine, of an angle in the first quadrant.
inline double other_of_unit(double one) { return std::sqrt(std::max(0.0, 1.0 - one * one)); }

/// Finds the solutions of a cos t + b sin t = c and returns their number, at most 2.
int directions(double a, double b, double c, AngleDirection* found);

/// Fixed-point iteration, or the closed form when c vanishes. At most 2 solutions.
int angles3_first_method(const AngleSystem& system, const AngleSlots& slots);

/// Elimination of psi. At most 2 solutions.
int angles3_second_method(const AngleSystem& system, const AngleSlots& slots);

}  // namespace nmk_solver
