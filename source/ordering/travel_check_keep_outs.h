// travel_check_keep_outs.h: whether keep-outs can be travelled around.
#pragma once

#include <string>

#include "travel_budget.h"
#include "travel_network.h"

namespace nmk_ordering {

/// The first fault of the keep-outs of a problem and of coordinates beside them, with what was
/// expected; empty for none.
std::string fault_of_keep_outs(const nmkTravelProblem& problem);

/// The first place that is inside a keep-out or cannot be reached from the others; empty for none.
/// Whether a place is enclosed is not looked at any more when the budget is over.
std::string fault_of_places(const TravelNetwork& network, TravelBudget& budget);

}  // namespace nmk_ordering
