// nmk2dSearchNode.h: a point of the plane as a node of a search. x is the direction of progress.
#pragma once

#include <geometry/giPoint2.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/search/nmkSearchNode.h>

class NMKTOOLBOX_EXPORT nmk2dSearchNode : public nmkSearchNode {
  public:
    explicit nmk2dSearchNode(giPoint2 point);
    nmk2dSearchNode(const nmk2dSearchNode&) = default;
    /// A node never changes: searches look it up by its point.
    nmk2dSearchNode& operator=(const nmk2dSearchNode&) = delete;
    ~nmk2dSearchNode() override;

    /// Euclidean distance; `other` must be a node of the plane. The cost of a route is its length.
    double min_cost(const nmkSearchNode& other) const override;

    /// The lower bound that `goal` returns for a node of the plane.
    double min_cost(const nmkSearchGoal& goal) const override;

    const giPoint2& point() const { return m_point; }

  protected:
    /// Whether `other` is a node of the plane at most 1e-5 away. Two routes to one lattice point
    /// add up to slightly different sums, and both ends are still equal.
    bool is_equal(const nmkSearchNode& other) const override;

  private:
    giPoint2 m_point;
};
