#include <nmktoolbox/search/nmk2dSearchGoal.h>
#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmk2dSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkLatticeRoute.h>

#include <utility>

#include "search/lattice_search.h"
#include "search/lattice_steps.h"
#include "search/plane_goals.h"

namespace {

/// The Space of nmk_search::LatticeSearch for cells. All references are the caller's.
struct CellSpace {
    using Item = nmkLatticeCell;
    static constexpr bool leaves_on_nan = false;

    double h(const giPoint2& point) const { return goal.min_cost(nmk2dSearchNode(point)); }
    bool is_goal(const giPoint2& point) const { return goal.contains(nmk2dSearchNode(point)); }
    bool goal_may_move() const { return goal_moves; }
    bool move_goal(const giPoint2& point) const {
        return goal.overshoot_goal(nmk2dSearchNode(point), generator);
    }
    Item item_of(nmkLatticeCell cell, const nmk_search::LatticeOpenList::Entry&) const {
        return cell;
    }
    nmkSearchNodeVerifierResult verify(const Item* parent, const Item& cell) const {
        return verifier.verify(parent, cell);
    }
    bool report_closed(const Item& cell) const {
        return observer == nullptr || observer->cell_closed(cell);
    }

    nmk_search::LatticeSteps directions;
    nmk_search::NumberedAxis columns;
    nmk_search::NumberedAxis rows;
    nmk2dSearchNodeGenerator generator;
    nmk2dSearchGoal& goal;
    bool goal_moves;
    const nmkLatticeVerifier& verifier;
    nmkLatticeObserver* observer;
};

}  // namespace

nmkLatticeVerifier::~nmkLatticeVerifier() = default;

nmkLatticeObserver::~nmkLatticeObserver() = default;

nmkLatticeRoute nmk_find_lattice_route(const nmkLattice& lattice, nmkLatticeCell start,
                                       nmk2dSearchGoal& goal, const nmkLatticeVerifier& verifier,
                                       nmkLatticeObserver* observer) {
    const giPoint2& step = lattice.step;
    CellSpace space{{step.x, step.y, lattice.forward_only},
                    {lattice.origin.x, step.x},
                    {lattice.origin.y, step.y},
                    {step.x, step.y},
                    goal,
                    !nmk_search::is_fixed_goal(goal),
                    verifier,
                    observer};
    nmk_search::LatticeSearch<CellSpace> search(std::move(space), start, lattice.point(start));
    const auto stop = search.run();
    switch (stop.reason) {
        case nmk_search::LatticeStopReason::arrived:
            return {nmkLatticeStopReason::arrived, search.route_to(stop.at)};
        case nmk_search::LatticeStopReason::stopped:
            return {nmkLatticeStopReason::stopped, {}};
        default:
            return {nmkLatticeStopReason::no_route, {}};
    }
}
