// nmk2dSearchGoal.h: the goals of a search in the plane.
//
// An arrival is a node whose min_cost is exactly 0.0, with no tolerance, so start and goal must
// be on one lattice. Below, dx and dy lead from the node to the target and are signed. The
// gradient is the greatest slope that a route may take: a change of dy needs |dy| / gradient of
// travel in x. It is not guarded against zero.
#pragma once

#include <geometry/giPoint2.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/search/nmkSearchGoal.h>

class NMKTOOLBOX_EXPORT nmk2dSearchGoal : public nmkSearchGoal {
  public:
    /// `node` must be a node of the plane.
    bool contains(const nmkSearchNode& node) const override;
    using nmkSearchGoal::min_cost;
    ~nmk2dSearchGoal() override = 0;
};

/// A point.
class NMKTOOLBOX_EXPORT nmk2dSearchGoalPoint : public nmk2dSearchGoal {
  public:
    explicit nmk2dSearchGoalPoint(giPoint2 target);
    ~nmk2dSearchGoalPoint() override;

    /// The distance to the target.
    double min_cost(const nmk2dSearchNode& node) const override;

  private:
    giPoint2 m_target;
};

/// The line from the target onwards in x.
class NMKTOOLBOX_EXPORT nmk2dSearchGoalXLine : public nmk2dSearchGoal {
  public:
    explicit nmk2dSearchGoalXLine(giPoint2 target);
    ~nmk2dSearchGoalXLine() override;

    /// |dy| strictly past the target in x, else the distance to the target.
    double min_cost(const nmk2dSearchNode& node) const override;

  private:
    giPoint2 m_target;
};

/// The line from the target onwards in x, reached within a gradient.
class NMKTOOLBOX_EXPORT nmk2dSearchGoalXLineWithGrad : public nmk2dSearchGoal {
  public:
    nmk2dSearchGoalXLineWithGrad(giPoint2 target, double gradient);
    ~nmk2dSearchGoalXLineWithGrad() override;

    /// sqrt(dy^2 + m^2), m the larger of |dy| / gradient and dx; dx keeps its sign.
    double min_cost(const nmk2dSearchNode& node) const override;

  private:
    giPoint2 m_target;
    double m_gradient;
};

/// A target that moves on in x when it can no longer be reached within the gradient.
class NMKTOOLBOX_EXPORT nmk2dSearchGoalMovingXLine : public nmk2dSearchGoal {
  public:
    nmk2dSearchGoalMovingXLine(giPoint2 target, double gradient);
    ~nmk2dSearchGoalMovingXLine() override;

    /// sqrt(dy^2 + m^2), m the larger of |dy| / gradient and |dx|.
    double min_cost(const nmk2dSearchNode& node) const override;

    /// Moves the target on along the generator's lattice, by at least |dy| / gradient, when that
    /// is greater than |dx|; true when it did so. The target stops early only where a step no
    /// longer changes x. For the library's own generators the end is computed at once; a
    /// generator of a caller's own class is asked for each step, however many it takes. A gradient
    /// of zero, which no move can satisfy, leaves the target where it is.
    /// A node that is not of the plane throws std::bad_cast.
    bool overshoot_goal(const nmkSearchNode& node,
                        const nmkSearchNodeGenerator& generator) override;

  private:
    giPoint2 m_target;
    double m_gradient;
};
