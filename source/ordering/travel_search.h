// travel_search.h: the search above the exact size, whole or cell by cell.
#pragma once

#include "travel_budget.h"
#include "travel_network.h"

namespace nmk_ordering {

/// A short sequence, from `start`; where the budget ends early, the best so far.
TravelSequence search_sequence(const TravelNetwork& network, const TravelSequence& start,
                               TravelBudget& budget);

/// A length that no sequence falls below: each node of an item pays half the way to its nearest
/// neighbours, as many as it has legs. Keep-outs only make ways longer, and are left out.
double lower_bound(const TravelNetwork& network);

}  // namespace nmk_ordering
