#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmk2dSearchNodeVerifier.h>

#include <utility>

#include "search/blocked_points.h"
#include "search/plane_nodes.h"

using NodeIterator = coiIterator<std::shared_ptr<const nmkSearchNode>>;

namespace {

// The points of an iterator whose values never change; null for any other iterator.
std::shared_ptr<const nmk_search::BlockedPoints> points_of_fixed(const NodeIterator& iterator) {
    using Fixed = coiFixedIterator<std::shared_ptr<const nmkSearchNode>>;
    const auto* fixed = dynamic_cast<const Fixed*>(&iterator.inner());
    if (fixed == nullptr) return nullptr;
    return std::make_shared<const nmk_search::BlockedPoints>(fixed->values());
}

}  // namespace

nmk2dSearchNodeVerifier::nmk2dSearchNodeVerifier(giBox2 bounds) : m_bounds(bounds) {}

nmk2dSearchNodeVerifier::~nmk2dSearchNodeVerifier() = default;

nmkSearchNodeVerifierResult nmk2dSearchNodeVerifier::verify(const nmkSearchNode&,
                                                            const nmkSearchNode& node) const {
    return is_in_bounds(node) ? nmkSearchNodeVerifierResult::accepted
                              : nmkSearchNodeVerifierResult::refused_for_good;
}

bool nmk2dSearchNodeVerifier::is_in_bounds(const nmkSearchNode& node) const {
    return m_bounds.contains(static_cast<const nmk2dSearchNode&>(node).point()) != 0;
}

nmk2dSearchNodeVerifierBlocked::nmk2dSearchNodeVerifierBlocked(giBox2 bounds, NodeIterator blocked)
    : nmk2dSearchNodeVerifier(bounds),
      m_blocked(std::move(blocked)),
      m_blocked_points(points_of_fixed(m_blocked)) {}

nmk2dSearchNodeVerifierBlocked::~nmk2dSearchNodeVerifierBlocked() = default;

nmkSearchNodeVerifierResult nmk2dSearchNodeVerifierBlocked::verify(
    const nmkSearchNode&, const nmkSearchNode& node) const {
    if (!is_in_bounds(node) || is_blocked(node)) {
        return nmkSearchNodeVerifierResult::refused_for_good;
    }
    return nmkSearchNodeVerifierResult::accepted;
}

bool nmk2dSearchNodeVerifierBlocked::is_blocked(const nmkSearchNode& node) const {
    if (m_blocked_points != nullptr && nmk_search::is_plain_plane_node(node)) {
        return m_blocked_points->contains(static_cast<const nmk2dSearchNode&>(node).point());
    }
    NodeIterator blocked(m_blocked);
    blocked.reset();
    while (++blocked) {
        if (node == *blocked()) return true;
    }
    return false;
}
