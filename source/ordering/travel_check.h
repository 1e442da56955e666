// travel_check.h: whether a travel problem can be solved.
#pragma once

#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <string>

namespace nmk_ordering {

/// The first fault of a problem, with what was expected; empty for none.
std::string fault_of(const nmkTravelProblem& problem);

}  // namespace nmk_ordering
