// nmkAStarSearch.h: best-first search of a route through a space that the caller supplies.
//
// The space is given by four small classes: a node, a goal, a generator of neighbours and a
// verifier of nodes. The search asks them in an order that is part of its contract. Among records
// of equal f the oldest is taken; a place may stand in the open list more than once, and all but
// the cheapest are dropped when they are popped; a record's cost is never corrected later.
//
// Taking the best record costs the logarithm of their number, unless an f is not a number. Whether
// a place is closed is looked up for nodes that are of class nmk2dSearchNode itself; nodes of any
// other kind are asked one after the other. Fastest is a search of this very class whose start,
// goal and generator are of the library's own classes of the plane, whatever its verifier: it makes
// nodes for the verifier only. That ends where sums of steps round too much, and where another
// start is set after a run.
//
// One search belongs to one thread, and of what it asks only the filler of a route may call it
// back. Nodes may be shared between searches, a goal that can move must not be. Exceptions of the
// four collaborators and of the filler pass through; the lists then stand as they were.
#pragma once

#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/export.h>

#include <memory>
#include <vector>

class nmkAStarSearchNode;
class nmkSearchGoal;
class nmkSearchNode;
class nmkSearchNodeGenerator;
class nmkSearchNodeVerifier;
namespace nmk_search {
class ClosedList;
class NodeLatticeSearch;
class OpenList;
}  // namespace nmk_search

class NMKTOOLBOX_EXPORT nmkAStarSearch {
  public:
    /// A search that is ready to run from `start`.
    nmkAStarSearch(std::shared_ptr<const nmkSearchNodeGenerator> generator,
                   std::shared_ptr<const nmkSearchNodeVerifier> verifier,
                   std::shared_ptr<const nmkSearchNode> start, std::shared_ptr<nmkSearchGoal> goal);
    nmkAStarSearch(const nmkAStarSearch&) = delete;
    nmkAStarSearch& operator=(const nmkAStarSearch&) = delete;
    virtual ~nmkAStarSearch();

    /// Empties the open list and puts `start` in it. The closed list stays: places that an earlier
    /// run closed are not entered again. For a clean search make a new object.
    void set_start(std::shared_ptr<const nmkSearchNode> start);

    /// Runs the search. The route goes to `filler` in the order of travel, start and arrival
    /// included; when there is none nothing is added. May be called again, and then goes on with
    /// the lists as they stand. Ends only where generator or verifier bound the space.
    void perform(coiFiller<std::shared_ptr<const nmkSearchNode>> filler);

  protected:
    /// Puts the neighbours of `node` that are not closed into the open list.
    virtual void expand_node(std::shared_ptr<const nmkAStarSearchNode> node);

    /// A new record for `node`, scored against the goal as it is now.
    virtual std::shared_ptr<nmkAStarSearchNode> generate_node(
        std::shared_ptr<const nmkSearchNode> node,
        std::shared_ptr<const nmkAStarSearchNode> parent) const;

    /// Whether `node` is an arrival.
    virtual bool is_goal(const nmkAStarSearchNode& node) const;

    /// Whether `node` is equal to one that is closed; the closed one is on the left.
    bool is_in_visited(const nmkSearchNode& node) const;

    /// Gives the way from the root to `node` to `filler`. The spelling of the name is relied on.
    void reconstuct_route(std::shared_ptr<const nmkAStarSearchNode> node,
                          coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const;

    /// Scores every record of the open list anew, oldest first.
    void update_goal();

  private:
    std::shared_ptr<const nmkAStarSearchNode> find_next_node();
    std::shared_ptr<const nmkAStarSearchNode> pop_best_node();

    using Records = std::vector<std::shared_ptr<const nmkAStarSearchNode>>;
    void enter_lattice();
    bool perform_on_lattice(coiFiller<std::shared_ptr<const nmkSearchNode>>& filler);
    Records leave_lattice();

    std::shared_ptr<const nmkSearchNode> m_start;
    std::shared_ptr<nmkSearchGoal> m_goal;
    std::shared_ptr<const nmkSearchNodeGenerator> m_generator;
    std::shared_ptr<const nmkSearchNodeVerifier> m_verifier;
    std::unique_ptr<nmk_search::ClosedList> m_visited;  // in the order of closing
    std::unique_ptr<nmk_search::OpenList> m_open;       // in the order of insertion
    std::unique_ptr<nmk_search::NodeLatticeSearch>
        m_lattice_search;  // while it stands for both lists
};
