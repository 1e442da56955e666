// nmkAnnealStateTester: exercises an ordering state and prints how good the annealer was on it.
//
// It checks the contract of the whole family: on any ordering state the annealer does at least as
// well as a nearest-neighbour tour. The columns of the table are separated by tabs.
#pragma once

#include <nmktoolbox/export.h>

#include <iosfwd>

class nmkAnnealOrderState;

class NMKTOOLBOX_EXPORT nmkAnnealStateTester {
  public:
    nmkAnnealStateTester();
    ~nmkAnnealStateTester();

    /// Writes the header line of the table.
    static void start_tests(std::ostream& out);

    /// Anneals `state` once for each run, with the seeds 1000, 1001, ..., and writes a line each.
    ///
    ///   best    a state of the same concrete type on the same items
    ///   closed  non-zero if the nearest-neighbour tour returns to its start
    ///
    /// Raises the internal assertion when a run ends worse than nearest neighbour.
    static void test(nmkAnnealOrderState& state, nmkAnnealOrderState& best, int runs, int closed,
                     std::ostream& out);
};
