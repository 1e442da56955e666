#include <nmktoolbox/search/nmk2dSearchGoal.h>
#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "search/lattice_steps.h"
#include "search/repeated_steps.h"

namespace {

// The travel in x that a change of dy demands.
double least_travel(double dy, double gradient) { return std::abs(dy) / gradient; }

// The straight run that covers both.
double run_length(double dy, double travel) { return std::sqrt(dy * dy + travel * travel); }

// The first coordinate of the generator's lattice from `x` onwards that is not below `limit`, or
// the one that a step no longer changes. A generator of a caller's own class is asked step by step.
double lattice_x_from(double x, double limit, const nmkSearchNodeGenerator& generator) {
    if (const auto steps = nmk_search::lattice_steps_of(generator)) {
        return nmk_search::step_until(x, steps->x, limit);
    }
    while (x < limit) {
        const double next = generator.find_x_value(x);
        if (next == x) break;
        x = next;
    }
    return x;
}

}  // namespace

bool nmk2dSearchGoal::contains(const nmkSearchNode& node) const {
    // Deliberate: no tolerance. A node near the target has not arrived.
    return min_cost(static_cast<const nmk2dSearchNode&>(node)) == 0.0;
}

nmk2dSearchGoal::~nmk2dSearchGoal() = default;

nmk2dSearchGoalPoint::nmk2dSearchGoalPoint(giPoint2 target) : m_target(target) {}

nmk2dSearchGoalPoint::~nmk2dSearchGoalPoint() = default;

double nmk2dSearchGoalPoint::min_cost(const nmk2dSearchNode& node) const {
    return node.point().distance(m_target);
}

nmk2dSearchGoalXLine::nmk2dSearchGoalXLine(giPoint2 target) : m_target(target) {}

nmk2dSearchGoalXLine::~nmk2dSearchGoalXLine() = default;

double nmk2dSearchGoalXLine::min_cost(const nmk2dSearchNode& node) const {
    if (m_target.x < node.point().x) return std::abs(m_target.y - node.point().y);
    return node.point().distance(m_target);
}

nmk2dSearchGoalXLineWithGrad::nmk2dSearchGoalXLineWithGrad(giPoint2 target, double gradient)
    : m_target(target), m_gradient(gradient) {}

nmk2dSearchGoalXLineWithGrad::~nmk2dSearchGoalXLineWithGrad() = default;

double nmk2dSearchGoalXLineWithGrad::min_cost(const nmk2dSearchNode& node) const {
    const double dx = m_target.x - node.point().x;
    const double dy = m_target.y - node.point().y;
    // Deliberate: dx keeps its sign, so a node past the line needs no further travel in x.
    return run_length(dy, std::max(least_travel(dy, m_gradient), dx));
}

nmk2dSearchGoalMovingXLine::nmk2dSearchGoalMovingXLine(giPoint2 target, double gradient)
    : m_target(target), m_gradient(gradient) {}

nmk2dSearchGoalMovingXLine::~nmk2dSearchGoalMovingXLine() = default;

double nmk2dSearchGoalMovingXLine::min_cost(const nmk2dSearchNode& node) const {
    const double dx = m_target.x - node.point().x;
    const double dy = m_target.y - node.point().y;
    // Deliberate: the distance back to a target that was passed counts, unlike for the fixed line.
    return run_length(dy, std::max(least_travel(dy, m_gradient), std::abs(dx)));
}

bool nmk2dSearchGoalMovingXLine::overshoot_goal(const nmkSearchNode& node,
                                                const nmkSearchNodeGenerator& generator) {
    const giPoint2& point = dynamic_cast<const nmk2dSearchNode&>(node).point();
    const double travel = least_travel(m_target.y - point.y, m_gradient);
    if (!(travel > std::abs(m_target.x - point.x))) return false;
    if (std::isinf(travel)) return false;  // a gradient of zero: no move is long enough
    const double x = lattice_x_from(m_target.x, m_target.x + travel, generator);
    // Deliberate: a target at the marker of an unset point loses its y as it moves.
    constexpr double largest = std::numeric_limits<double>::max();
    if (m_target.x == -largest) m_target.y = largest;
    m_target.x = x;
    return true;
}
