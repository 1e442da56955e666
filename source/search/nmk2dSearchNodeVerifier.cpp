#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmk2dSearchNodeVerifier.h>

#include <utility>

nmk2dSearchNodeVerifier::nmk2dSearchNodeVerifier(giBox2 box) : m_bounds(box) {}

nmk2dSearchNodeVerifier::~nmk2dSearchNodeVerifier() = default;

nmkSearchNodeVerifierResult nmk2dSearchNodeVerifier::verify(const nmkSearchNode&,
                                                            const nmkSearchNode& node) const {
    return is_in_bounds(node) ? nmkSearchNodeVerifierResult::accepted
                              : nmkSearchNodeVerifierResult::refused_for_good;
}

bool nmk2dSearchNodeVerifier::is_in_bounds(const nmkSearchNode& node) const {
    return m_bounds.contains(static_cast<const nmk2dSearchNode&>(node).point()) != 0;
}

nmk2dSearchNodeVerifierBlocked::nmk2dSearchNodeVerifierBlocked(
    giBox2 box, coiIterator<std::shared_ptr<const nmkSearchNode>> blocked_nodes)
    : nmk2dSearchNodeVerifier(box), m_blocked(std::move(blocked_nodes)) {}

nmk2dSearchNodeVerifierBlocked::~nmk2dSearchNodeVerifierBlocked() = default;

nmkSearchNodeVerifierResult nmk2dSearchNodeVerifierBlocked::verify(
    const nmkSearchNode&, const nmkSearchNode& node) const {
    if (!is_in_bounds(node)) return nmkSearchNodeVerifierResult::refused_for_good;
    coiIterator<std::shared_ptr<const nmkSearchNode>> blocked(m_blocked);
    blocked.reset();
    while (++blocked) {
        if (node == *blocked()) return nmkSearchNodeVerifierResult::refused_for_good;
    }
    return nmkSearchNodeVerifierResult::accepted;
}
