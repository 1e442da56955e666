#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmkSearchGoal.h>

#include "search/plane_nodes.h"

nmk2dSearchNode::nmk2dSearchNode(giPoint2 point) : m_point(point) {}

nmk2dSearchNode::~nmk2dSearchNode() = default;

double nmk2dSearchNode::min_cost(const nmkSearchNode& other) const {
    return m_point.distance(static_cast<const nmk2dSearchNode&>(other).m_point);
}

double nmk2dSearchNode::min_cost(const nmkSearchGoal& goal) const { return goal.min_cost(*this); }

bool nmk2dSearchNode::is_equal(const nmkSearchNode& other) const {
    const auto* node = dynamic_cast<const nmk2dSearchNode*>(&other);
    return node != nullptr && nmk_search::points_coincide(m_point, node->m_point);
}
