// nmkLatticeRoute.h: a shortest route over the cells of a lattice.
//
// An entry of this library's own beside nmkAStarSearch, for a space that is a lattice of the plane:
// cells are verified, reported and returned by column and row, no node is made, and an observer can
// stop the search. Wherever no coordinate of the lattice rounds, it asks the same questions in the
// same order as nmkAStarSearch does with a generator of the plane, and finds the same route.
//
// The point of a cell is computed from its column and row, never added up step by step, so each
// cell has one point and a goal at nmkLattice::point of a cell is met exactly.
#pragma once

#include <geometry/giPoint2.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <cstdint>
#include <vector>

class nmk2dSearchGoal;

/// A cell of a lattice. Columns count steps in x, rows steps in y.
struct nmkLatticeCell {
    std::int32_t column = 0;
    std::int32_t row = 0;

    bool operator==(const nmkLatticeCell&) const = default;
};

/// A lattice without bounds. Its steps must be finite and not zero.
struct nmkLattice {
    giPoint2 origin;  // the point of column 0, row 0
    giPoint2 step;
    bool forward_only = false;  // routes step to the next column only, else to all 8 neighbours

    giPoint2 point(nmkLatticeCell cell) const {
        return {origin.x + cell.column * step.x, origin.y + cell.row * step.y};
    }
};

/// Which cells a route may pass. The verifier has to bound the search: columns and rows end by
/// themselves only beyond 2^30.
class NMKTOOLBOX_EXPORT nmkLatticeVerifier {
  public:
    /// Whether the step from `parent` to `cell` may be taken; `parent` is null for the start.
    /// Asked for each cell that is taken from the open list and not closed yet.
    virtual nmkSearchNodeVerifierResult verify(const nmkLatticeCell* parent,
                                               nmkLatticeCell cell) const = 0;
    virtual ~nmkLatticeVerifier();
};

class NMKTOOLBOX_EXPORT nmkLatticeObserver {
  public:
    /// Called for each cell that was accepted and closed, in that order, before it is compared with
    /// the goal. Returns whether the search continues.
    virtual bool cell_closed(nmkLatticeCell cell) = 0;
    virtual ~nmkLatticeObserver();
};

enum class nmkLatticeStopReason {
    arrived,
    no_route,  // no cell is left that could be reached
    stopped    // by the observer
};

struct nmkLatticeRoute {
    nmkLatticeStopReason stop_reason = nmkLatticeStopReason::no_route;
    std::vector<nmkLatticeCell> cells;  // in the order of travel, both ends included; only after
                                        // arrival
};

/// The shortest route from `start` to `goal`.
///
///   goal      may move meanwhile; the caller can read from it afterwards where it is
///   observer  may be null
///
/// The cost of a step is its length. Among cells of equal cost the one opened first is taken. A
/// cost that is not a number is taken as infinite. Exceptions of the three pass through.
NMKTOOLBOX_EXPORT nmkLatticeRoute nmk_find_lattice_route(const nmkLattice& lattice,
                                                         nmkLatticeCell start,
                                                         nmk2dSearchGoal& goal,
                                                         const nmkLatticeVerifier& verifier,
                                                         nmkLatticeObserver* observer = nullptr);
