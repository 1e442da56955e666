// grid_search.h: searches of a grid map through the classes of the plane.
#pragma once

#include <nmktoolbox/search.h>

#include <memory>
#include <vector>

#include "search/grid_map.h"

namespace nmk_search::grid {

using NodePointer = std::shared_ptr<const nmkSearchNode>;

inline giPoint2 point_of(Cell cell) { return giPoint2(cell.x, cell.y); }
inline Cell cell_of(const nmkSearchNode& node) {
    const giPoint2& point = static_cast<const nmk2dSearchNode&>(node).point();
    return {static_cast<int>(point.x), static_cast<int>(point.y)};
}
inline giBox2 box_of(const Map& map) {
    return giBox2(giPoint2(0, 0), giPoint2(map.width - 1, map.height - 1));
}

/// The cells that are not open, as nodes.
inline std::vector<NodePointer> blocked_cells(const Map& map) {
    std::vector<NodePointer> blocked;
    for (int y = 0; y < map.height; ++y) {
        for (int x = 0; x < map.width; ++x) {
            if (!map.is_open(x, y))
                blocked.push_back(std::make_shared<nmk2dSearchNode>(point_of({x, y})));
        }
    }
    return blocked;
}

/// Refuses closed cells by the library's own verifier. Where corners may be cut that is all.
inline std::shared_ptr<const nmkSearchNodeVerifier> cutting_verifier(const Map& map) {
    return std::make_shared<nmk2dSearchNodeVerifierBlocked>(
        box_of(map), coiIterator_from_values(blocked_cells(map)));
}

/// Refuses a step that cuts a corner for this parent only.
class CornerVerifier : public nmk2dSearchNodeVerifier {
  public:
    explicit CornerVerifier(const Map& its_map)
        : nmk2dSearchNodeVerifier(box_of(its_map)), map(its_map) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        const Cell to = cell_of(node);
        if (!map.is_open(to.x, to.y)) return nmkSearchNodeVerifierResult::refused_for_good;
        const auto* from = dynamic_cast<const nmk2dSearchNode*>(&parent);
        if (from == nullptr || StepRule{map, false}.allows(cell_of(*from), to)) {
            return nmkSearchNodeVerifierResult::accepted;
        }
        return nmkSearchNodeVerifierResult::refused_for_this_parent;
    }

  private:
    const Map& map;
};

/// The cells of the route; none where there is none.
inline std::vector<Cell> route(std::shared_ptr<const nmkSearchNodeVerifier> verifier, Cell start,
                               Cell goal) {
    nmkAStarSearch search(std::make_shared<nmk2dSearchNodeGenerator>(1, 1), std::move(verifier),
                          std::make_shared<nmk2dSearchNode>(point_of(start)),
                          std::make_shared<nmk2dSearchGoalPoint>(point_of(goal)));
    std::vector<NodePointer> nodes;
    search.perform(coiFiller_from_container(nodes));
    std::vector<Cell> cells;
    for (const NodePointer& node : nodes) cells.push_back(cell_of(*node));
    return cells;
}

/// The length of a route, or infinite when a step of it breaks the rule or it is empty.
inline double length_of(const std::vector<Cell>& cells, const StepRule& rule) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (cells.empty()) return infinity;
    double length = 0.0;
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const double step = std::hypot(cells[i].x - cells[i - 1].x, cells[i].y - cells[i - 1].y);
        if (step > 1.5 || !rule.allows(cells[i - 1], cells[i])) return infinity;
        length += step;
    }
    return length;
}

}  // namespace nmk_search::grid
