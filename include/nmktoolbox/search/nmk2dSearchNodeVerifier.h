// nmk2dSearchNodeVerifier.h: a rectangle of allowed points, and blocked points in it.
#pragma once

#include <geometry/giBox2.h>
#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <memory>

/// Accepts every point of a rectangle, its edge included. Nodes must be nodes of the plane.
class NMKTOOLBOX_EXPORT nmk2dSearchNodeVerifier : public nmkSearchNodeVerifier {
  public:
    explicit nmk2dSearchNodeVerifier(giBox2 bounds);
    ~nmk2dSearchNodeVerifier() override;

    /// accepted in bounds, else refused_for_good. `parent` is not used.
    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override;
    bool is_in_bounds(const nmkSearchNode& node) const override;

  protected:
    const giBox2& bounds() const { return m_bounds; }

  private:
    giBox2 m_bounds;
};

namespace nmk_search {
class BlockedPoints;
}

/// Refuses blocked points too. They are points, not regions: a step may pass between them.
///
/// Each verdict walks the blocked nodes that the iterator provides at that moment. Those of a
/// coiFixedIterator never change and are looked up in an index instead.
class NMKTOOLBOX_EXPORT nmk2dSearchNodeVerifierBlocked : public nmk2dSearchNodeVerifier {
  public:
    nmk2dSearchNodeVerifierBlocked(giBox2 bounds,
                                   coiIterator<std::shared_ptr<const nmkSearchNode>> blocked);
    ~nmk2dSearchNodeVerifierBlocked() override;

    /// accepted in bounds and equal to no blocked node, else refused_for_good. The iterator itself
    /// is not moved; a copy is walked from its start.
    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override;

  private:
    bool is_blocked(const nmkSearchNode& node) const;

    coiIterator<std::shared_ptr<const nmkSearchNode>> m_blocked;
    std::shared_ptr<const nmk_search::BlockedPoints>
        m_blocked_points;  // null where they may change
};
