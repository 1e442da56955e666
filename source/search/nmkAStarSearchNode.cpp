#include <nmktoolbox/search/nmkAStarSearchNode.h>
#include <nmktoolbox/search/nmkSearchNode.h>

#include <utility>

nmkAStarSearchNode::nmkAStarSearchNode(std::shared_ptr<const nmkSearchNode> node,
                                       std::shared_ptr<const nmkAStarSearchNode> parent,
                                       const nmkSearchGoal& goal)
    : m_node(std::move(node)), m_parent(std::move(parent)) {
    nmkAStarSearchNode::calculate_h(goal);
    nmkAStarSearchNode::calculate_g();
}

// Freeing the last reference to a parent would free its own parent, and so on to the root, one call
// inside the other. The loop frees the chain link by link instead.
nmkAStarSearchNode::~nmkAStarSearchNode() {
    std::shared_ptr<const nmkAStarSearchNode> link = std::move(m_parent);
    while (link != nullptr && link.use_count() == 1) {
        // With one reference left, no other owner can observe that the parent is taken.
        link = std::move(const_cast<nmkAStarSearchNode&>(*link).m_parent);
    }
}

void nmkAStarSearchNode::calculate_h(const nmkSearchGoal& goal) { set_h(m_node->min_cost(goal)); }

void nmkAStarSearchNode::calculate_g() {
    m_g = m_parent == nullptr ? 0.0 : m_node->min_cost(*m_parent->m_node) + m_parent->m_g;
    report_change();
}

void nmkAStarSearchNode::set_h(double h) {
    m_h = h;
    report_change();
}

void nmkAStarSearchNode::report_change() const {
    if (m_score_changed != nullptr) *m_score_changed = true;
}
