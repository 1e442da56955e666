// lattice_search.h: a search whose nodes, goal and generator are the library's own of the plane.
//
// Nobody can see such nodes being made, compared and scored. So places are known by column and row,
// what waits to be popped stands in arrays, and a node is made for the verifier alone. The
// verifier, which may be a caller's own, is asked what it would be asked otherwise, in the same
// order, about nodes that become those of the route.
//
// Where sums of steps drift too far from the lattice, and where a score is no number and so
// compares with nothing, the search stops, and is to be gone on with by lists of records and nodes.
#pragma once

#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "search/cell_set.h"
#include "search/lattice.h"
#include "search/lattice_open_list.h"
#include "search/lattice_steps.h"

class nmkSearchGoal;
class nmkSearchNodeGenerator;

namespace nmk_search {

class LatticeSearch {
  public:
    using Node = std::shared_ptr<const nmkSearchNode>;

    /// Of a closed place, in the order of closing.
    using Number = std::uint32_t;
    static constexpr Number none = UINT32_MAX;

    enum class Why {
        arrived,
        exhausted,
        left_lattice,
    };

    struct Stop {
        Why why;
        Number at;  // the arrival, or a closed place whose neighbours are not open yet, or none
    };

    /// A search that is ready to run from `start`, or nothing when it is not of this kind.
    static std::unique_ptr<LatticeSearch> make(
        std::shared_ptr<const nmkSearchNodeGenerator> generator,
        std::shared_ptr<const nmkSearchNodeVerifier> verifier, const Node& start,
        std::shared_ptr<nmkSearchGoal> goal);

    /// Goes on with the lists as they stand.
    Stop run();

    struct Closed {
        Node node;
        Number parent;  // or none
    };

    /// The places that are closed, in the order of closing.
    const std::vector<Closed>& closed() const { return m_closed; }

    /// Gives the way from the root to a closed place to `filler`.
    void add_route(Number arrival, coiFiller<Node>& filler) const;

    /// The records that are left open, oldest first.
    std::vector<LatticeOpenList::Way> open_ways() const;

    /// The start itself for a way without a parent, else a new node.
    Node node_of(const LatticeOpenList::Way& way) const;

  private:
    LatticeSearch(const LatticeSteps& steps, const nmk2dSearchNode& start);

    double f_of(const LatticeOpenList::Way& way);
    nmkSearchNodeVerifierResult verify(Number parent, const nmkSearchNode& node) const;
    bool close(LatticeCell place, const LatticeOpenList::Way& way);
    void move_goal(const giPoint2& point);
    bool expand(LatticeCell place, const LatticeOpenList::Way& from, Number number);
    void keep_ages_for(std::size_t records);

    LatticeSteps m_steps;
    LatticeAxis m_columns;
    LatticeAxis m_rows;
    std::shared_ptr<const nmkSearchNodeGenerator> m_generator;
    std::shared_ptr<const nmkSearchNodeVerifier> m_verifier;
    Node m_root;
    std::shared_ptr<nmkSearchGoal> m_goal;
    bool m_goal_moves = false;
    bool m_scores_do_not_compare = false;

    LatticeOpenList m_open;
    std::vector<Closed> m_closed;
    CellSet m_closed_cells;
};

}  // namespace nmk_search
