// node_lattice_search.h: a search by nodes whose start, goal and generator are of the library's own
// classes of the plane.
//
// No caller can observe such nodes being made, compared and scored. So cells are compared by column
// and row, and a node is made for the verifier alone. The verifier, which may be a caller's own, is
// asked the same questions in the same order as by the general lists, about nodes that become those
// of the route.
//
// Where sums of steps drift too far from the lattice, and where a score is NaN and so compares with
// nothing, the search stops, and the caller continues with the general open and closed lists.
#pragma once

#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmkSearchGoal.h>

#include <memory>
#include <vector>

#include "search/lattice_search.h"
#include "search/lattice_steps.h"

class nmkSearchNodeGenerator;

namespace nmk_search {

/// The Space of LatticeSearch for nodes.
struct NodeSpace {
    using Item = std::shared_ptr<const nmkSearchNode>;
    static constexpr bool leaves_on_nan = true;

    double h(const giPoint2& point) const { return goal->min_cost(nmk2dSearchNode(point)); }
    bool is_goal(const giPoint2& point) const { return goal->contains(nmk2dSearchNode(point)); }
    bool goal_may_move() const { return goal_moves; }
    bool move_goal(const giPoint2& point) const {
        return goal->overshoot_goal(nmk2dSearchNode(point), *generator);
    }

    /// The start itself for an entry without a parent, else a new node.
    Item item_of(LatticeCell cell, const LatticeOpenList::Entry& entry) const;
    nmkSearchNodeVerifierResult verify(const Item* parent, const Item& node) const;
    bool report_closed(const Item&) const { return true; }

    LatticeSteps directions;
    SummedAxis columns;
    SummedAxis rows;
    std::shared_ptr<const nmkSearchNodeGenerator> generator;
    std::shared_ptr<const nmkSearchNodeVerifier> verifier;
    Item start;
    std::shared_ptr<nmkSearchGoal> goal;
    bool goal_moves;
};

class NodeLatticeSearch : public LatticeSearch<NodeSpace> {
  public:
    using Node = NodeSpace::Item;
    using LatticeSearch::LatticeSearch;

    /// A search that is ready to run from `start`; null when it is not of this kind.
    static std::unique_ptr<NodeLatticeSearch> make(
        std::shared_ptr<const nmkSearchNodeGenerator> generator,
        std::shared_ptr<const nmkSearchNodeVerifier> verifier, const Node& start,
        std::shared_ptr<nmkSearchGoal> goal);

    /// The node of an open entry.
    Node node_of(const Entry& entry) const { return space().item_of({}, entry); }
};

}  // namespace nmk_search
