// nmk2dSearchNodeVerifier.h: a rectangle of allowed places, and blocked places in it.
#pragma once

#include <geometry/giBox2.h>
#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <memory>

/// Accepts every place of a rectangle, its edge included. Nodes must be nodes of the plane.
class NMKTOOLBOX_EXPORT nmk2dSearchNodeVerifier : public nmkSearchNodeVerifier {
  public:
    explicit nmk2dSearchNodeVerifier(giBox2 bounds);
    ~nmk2dSearchNodeVerifier() override;

    /// accepted in bounds, else refused_for_good. `parent` is not looked at.
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

/// Refuses blocked places too. They are places, not regions: a step may pass between them.
///
/// A verdict walks all blocked nodes, whatever stands behind the iterator by then. Those of a
/// coiFixedIterator, which never change, are looked up instead.
class NMKTOOLBOX_EXPORT nmk2dSearchNodeVerifierBlocked : public nmk2dSearchNodeVerifier {
  public:
    nmk2dSearchNodeVerifierBlocked(giBox2 bounds,
                                   coiIterator<std::shared_ptr<const nmkSearchNode>> blocked);
    ~nmk2dSearchNodeVerifierBlocked() override;

    /// accepted in bounds and equal to no blocked node, else refused_for_good. The iterator itself
    /// stays where it is; a copy is walked from its start.
    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override;

  private:
    bool is_blocked(const nmkSearchNode& node) const;

    coiIterator<std::shared_ptr<const nmkSearchNode>> m_blocked;
    std::shared_ptr<const nmk_search::BlockedPoints> m_places;  // empty: they may change
};
