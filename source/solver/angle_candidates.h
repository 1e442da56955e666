// angle_candidates: what the second method has found on the way to its solutions.
//
// Room is for two; what is beyond is only counted, since such an input has no isolated solutions.
#pragma once

#include "solver/angle_elimination.h"

struct AngleCandidates {
    static constexpr int most = 2;

    AnglePair pairs[most];
    bool psi_is_open[most] = {};  ///< psi could not be taken from A1 and A2
    bool single_phi = false;      ///< there is one phi only, so that psi may take several values
    int count = 0;                ///< may go past `most`

    bool too_many() const { return count > most; }

    void add(const AngleDirection& phi, const AngleDirection& psi = {}, bool open = false) {
        if (count < most) {
            pairs[count] = {phi, psi};
            psi_is_open[count] = open;
        }
        ++count;
    }
};

/// Sets psi of a slot from A1 and A2, or flags the slot when their squares sum to at most `limit`.
void take_psi(double a1, double a2, double limit, const AngleElimination& elimination,
              AngleCandidates& found, int slot);

/// Searches the quarter circle for zeros of F. Answers false when the pairs found are the result as
/// they stand, with psi.
bool search_quarter_circle(const AngleElimination& elimination, AngleCandidates& found);
