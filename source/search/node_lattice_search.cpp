#include "search/node_lattice_search.h"

#include <optional>
#include <utility>

#include "search/plane_goals.h"
#include "search/plane_nodes.h"
#include "search/root_parent.h"

namespace nmk_search {

NodeSpace::Item NodeSpace::item_of(LatticeCell, const LatticeOpenList::Entry& entry) const {
    if (entry.parent == LatticeSearch<NodeSpace>::none) return start;
    return std::make_shared<nmk2dSearchNode>(entry.point);
}

nmkSearchNodeVerifierResult NodeSpace::verify(const Item* parent, const Item& node) const {
    return verifier->verify(parent == nullptr ? RootParent::instance() : **parent, *node);
}

std::unique_ptr<NodeLatticeSearch> NodeLatticeSearch::make(
    std::shared_ptr<const nmkSearchNodeGenerator> generator,
    std::shared_ptr<const nmkSearchNodeVerifier> verifier, const Node& start,
    std::shared_ptr<nmkSearchGoal> goal) {
    const std::optional<LatticeSteps> steps = lattice_steps_of(*generator);
    if (!steps || !is_plain_plane_node(*start) || !is_library_goal(*goal)) return nullptr;
    const giPoint2 point = static_cast<const nmk2dSearchNode&>(*start).point();
    const SummedAxis columns(point.x, steps->x);
    const SummedAxis rows(point.y, steps->y);
    if (!columns.is_usable() || !rows.is_usable()) return nullptr;
    const bool goal_moves = !is_fixed_goal(*goal);
    NodeSpace space{*steps, columns,         rows,      std::move(generator), std::move(verifier),
                    start,  std::move(goal), goal_moves};
    return std::make_unique<NodeLatticeSearch>(std::move(space), LatticeCell{0, 0}, point);
}

}  // namespace nmk_search
