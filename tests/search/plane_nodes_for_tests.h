// plane_nodes_for_tests.h: nodes of the plane for tests, the neighbours that a generator makes, and
// whole searches.
#pragma once

#include <nmktoolbox/search.h>

#include <memory>
#include <utility>
#include <vector>

namespace nmk_search::plane {

using NodePointer = std::shared_ptr<const nmkSearchNode>;
using Points = std::vector<std::pair<double, double>>;

inline nmk2dSearchNode node_at(double x, double y) { return nmk2dSearchNode(giPoint2(x, y)); }
inline NodePointer shared_node(double x, double y) {
    return std::make_shared<nmk2dSearchNode>(giPoint2(x, y));
}

inline Points points_of(const std::vector<NodePointer>& nodes) {
    Points points;
    for (const NodePointer& node : nodes) {
        const giPoint2& point = static_cast<const nmk2dSearchNode&>(*node).point();
        points.emplace_back(point.x, point.y);
    }
    return points;
}

inline Points neighbours(const nmkSearchNodeGenerator& generator, double x, double y) {
    std::vector<NodePointer> nodes;
    generator.expand_node(node_at(x, y), coiFiller_from_container(nodes));
    return points_of(nodes);
}

inline Points route(std::shared_ptr<nmkSearchNodeGenerator> generator,
                    std::shared_ptr<nmkSearchNodeVerifier> verifier, NodePointer start,
                    std::shared_ptr<nmkSearchGoal> goal) {
    nmkAStarSearch search(generator, verifier, start, goal);
    std::vector<NodePointer> nodes;
    search.perform(coiFiller_from_container(nodes));
    return points_of(nodes);
}

// A cursor over a list of nodes.
class ListCursor : public coiAbsCloneableIterator<NodePointer> {
  public:
    explicit ListCursor(std::shared_ptr<const std::vector<NodePointer>> nodes) : m_nodes(nodes) {}
    bool undefined() const override { return m_at < 0; }
    void reset() override { m_at = -1; }
    bool operator++() override {
        if (m_at + 1 >= static_cast<int>(m_nodes->size())) return false;
        ++m_at;
        return true;
    }
    const NodePointer& operator()() const override {
        return (*m_nodes)[static_cast<std::size_t>(m_at)];
    }
    std::unique_ptr<coiAbsCloneableIterator<NodePointer>> clone() const override {
        return std::make_unique<ListCursor>(*this);
    }

  private:
    std::shared_ptr<const std::vector<NodePointer>> m_nodes;
    int m_at = -1;
};

inline coiIterator<NodePointer> cursor_over(std::vector<NodePointer> nodes) {
    return coiIterator<NodePointer>(std::make_unique<ListCursor>(
        std::make_shared<const std::vector<NodePointer>>(std::move(nodes))));
}

/// A node of a class outside the plane; it is equal to every node.
class Other : public nmkSearchNode {
  public:
    double min_cost(const nmkSearchNode&) const override { return 0; }
    double min_cost(const nmkSearchGoal&) const override { return 0; }

  protected:
    bool is_equal(const nmkSearchNode&) const override { return true; }
};

}  // namespace nmk_search::plane
