// angle_candidates: the candidates for solutions that the second method collects.
//
// Two are kept; more are only counted, since such an input has no isolated solutions.
#pragma once

#include "solver/angle_elimination.h"

namespace nmk_solver {

struct AngleCandidates {
    static constexpr int max_count = 2;

    AnglePair pairs[max_count];
    bool psi_is_open[max_count] = {};  ///< psi could not be taken from A1 and A2
    bool single_phi = false;  ///< there is one phi only, so that psi may take several values
    int count = 0;            ///< may exceed `max_count`

    bool too_many() const { return count > max_count; }

    void add(const AngleDirection& phi, const AngleDirection& psi = {}, bool open = false) {
        if (count < max_count) {
            pairs[count] = {phi, psi};
            psi_is_open[count] = open;
        }
        ++count;
    }
};

/// Sets psi of a slot from A1 and A2, or flags the slot when their squares sum to at most `limit`.
void take_psi(double a1, double a2, double limit, const AngleElimination& elimination,
              AngleCandidates& found, int slot);

/// Searches the quarter circle for zeros of F. Returns false when the pairs found are the
/// result already, with psi.
bool search_quarter_circle(const AngleElimination& elimination, AngleCandidates& found);

}  // namespace nmk_solver
