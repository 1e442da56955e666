#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmkSearchGoal.h>

namespace {

// Compared with the distance of two nodes; at most this far apart they are one place.
constexpr double nodes_are_one_place = 1e-5;

}  // namespace

nmk2dSearchNode::nmk2dSearchNode(giPoint2 place) : m_point(place) {}

nmk2dSearchNode::~nmk2dSearchNode() = default;

double nmk2dSearchNode::min_cost(const nmkSearchNode& other) const {
    return m_point.distance(static_cast<const nmk2dSearchNode&>(other).m_point);
}

double nmk2dSearchNode::min_cost(const nmkSearchGoal& goal) const { return goal.min_cost(*this); }

bool nmk2dSearchNode::is_equal(const nmkSearchNode& other) const {
    const auto* node = dynamic_cast<const nmk2dSearchNode*>(&other);
    return node != nullptr && m_point.coincident(node->m_point, nodes_are_one_place) != 0;
}
