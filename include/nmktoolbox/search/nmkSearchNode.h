// nmkSearchNode.h: a node of the space that a search walks.
#pragma once

#include <nmktoolbox/export.h>

class nmkSearchGoal;

/// A node of a caller's space. Nodes are shared and never change once made.
class NMKTOOLBOX_EXPORT nmkSearchNode {
  public:
    /// The cost of the step between this node and `other`.
    virtual double min_cost(const nmkSearchNode& other) const = 0;

    /// A lower bound of the cost from this node to `goal`.
    virtual double min_cost(const nmkSearchGoal& goal) const = 0;

    virtual ~nmkSearchNode() = 0;

    /// Whether the two are the same node for a search. Need be neither symmetric nor transitive.
    bool operator==(const nmkSearchNode& other) const;
    bool operator!=(const nmkSearchNode& other) const;

  protected:
    nmkSearchNode() = default;
    nmkSearchNode(const nmkSearchNode&) = default;
    nmkSearchNode& operator=(const nmkSearchNode&) = default;

    /// The result of operator==.
    virtual bool is_equal(const nmkSearchNode& other) const = 0;
};
