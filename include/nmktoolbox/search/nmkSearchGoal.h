// nmkSearchGoal.h: where a search wants to arrive.
#pragma once

#include <nmktoolbox/export.h>

class nmk2dSearchNode;
class nmkSearchNode;
class nmkSearchNodeGenerator;

/// A goal. It may move while the search runs, so one goal must not be shared by two searches at
/// once.
class NMKTOOLBOX_EXPORT nmkSearchGoal {
  public:
    /// Whether `node` is an arrival.
    virtual bool contains(const nmkSearchNode& node) const = 0;

    /// A lower bound of the cost from `node`: 0.0 unless a goal of the plane overrides it. This is
    /// the second half of a double dispatch from nmkSearchNode::min_cost; a further kind of node
    /// needs a further overload here.
    virtual double min_cost(const nmk2dSearchNode& node) const;

    virtual ~nmkSearchGoal() = 0;

    /// Called for each node that is chosen from the open list. Returns whether the goal has changed
    /// itself, so that every heuristic value is stale; false here.
    virtual bool overshoot_goal(const nmkSearchNode& node, const nmkSearchNodeGenerator& generator);

  protected:
    nmkSearchGoal() = default;
    nmkSearchGoal(const nmkSearchGoal&) = default;
    nmkSearchGoal& operator=(const nmkSearchGoal&) = default;
};
