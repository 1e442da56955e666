#include <nmktoolbox/search/nmkSearchGoal.h>

double nmkSearchGoal::min_cost(const nmk2dSearchNode&) const { return 0.0; }

nmkSearchGoal::~nmkSearchGoal() = default;

bool nmkSearchGoal::overshoot_goal(const nmkSearchNode&, const nmkSearchNodeGenerator&) {
    return false;
}
