// plane_goals.h: which goals are of the library's own classes, so that all they do is known.
#pragma once

#include <nmktoolbox/search/nmk2dSearchGoal.h>

#include <typeinfo>

namespace nmk_search {

/// Whether the goal is known never to move.
inline bool is_fixed_goal(const nmkSearchGoal& goal) {
    const std::type_info& type = typeid(goal);
    return type == typeid(nmk2dSearchGoalPoint) || type == typeid(nmk2dSearchGoalXLine) ||
           type == typeid(nmk2dSearchGoalXLineWithGrad);
}

inline bool is_library_goal(const nmkSearchGoal& goal) {
    return is_fixed_goal(goal) || typeid(goal) == typeid(nmk2dSearchGoalMovingXLine);
}

}  // namespace nmk_search
