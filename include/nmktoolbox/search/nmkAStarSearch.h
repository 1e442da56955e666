// nmkAStarSearch.h: best-first search of a route through a space that the caller supplies.
//
// The space is given by four small classes: a node, a goal, a generator of neighbours and a
// verifier of nodes. The order of the calls to them is part of the contract. Among records of equal
// f the oldest is taken; a node may be in the open list more than once, and all records of it but
// the cheapest are dropped when they are popped; a record's cost is never corrected later.
//
// Taking the best record is logarithmic in their number, unless an f is NaN. Nodes whose class is
// nmk2dSearchNode itself are looked up in an index of the closed nodes; nodes of any other class
// are compared with the closed ones one by one. Fastest is a search of this class itself, not a
// derived one, whose start, goal and generator are of the library's own classes of the plane; its
// verifier may be of any class. It makes nodes for the verifier only. It changes to the general
// lists where sums of steps round too much, and where set_start is called after a run.
//
// One search belongs to one thread, and of the objects that it calls only the filler of a route may
// call it back. Nodes may be shared between searches, a goal that can move must not be. Exceptions
// of the four collaborators and of the filler pass through; the lists are then left as they were at
// that moment.
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

    /// Empties the open list and puts `start` in it. The closed list is kept: nodes that an earlier
    /// run closed are not entered again. For a clean search make a new object.
    void set_start(std::shared_ptr<const nmkSearchNode> start);

    /// Runs the search. The route goes to `filler` in the order of travel, start and arrival
    /// included; when there is none, nothing is added. May be called again, and then continues with
    /// the lists as they are. Ends only where generator or verifier bound the space.
    void perform(coiFiller<std::shared_ptr<const nmkSearchNode>> filler);

  protected:
    /// Puts the neighbours of the node of `record` that are not closed into the open list.
    virtual void expand_node(std::shared_ptr<const nmkAStarSearchNode> record);

    /// A new record for `node`, scored against the goal as it is now.
    virtual std::shared_ptr<nmkAStarSearchNode> generate_node(
        std::shared_ptr<const nmkSearchNode> node,
        std::shared_ptr<const nmkAStarSearchNode> parent) const;

    /// Whether the node of `record` is an arrival.
    virtual bool is_goal(const nmkAStarSearchNode& record) const;

    /// Whether `node` is equal to one that is closed; the closed one is on the left.
    bool is_in_visited(const nmkSearchNode& node) const;

    /// Adds the route from the root to the node of `record` to `filler`. Derived classes rely on
    /// the spelling.
    void reconstuct_route(std::shared_ptr<const nmkAStarSearchNode> record,
                          coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const;

    /// Computes h of every record of the open list again, oldest first.
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
        m_lattice_search;  // while it replaces both lists
};
