// travel_turns.h: the best directions of lines in a given order.
#pragma once

#include "travel_network.h"

namespace nmk_ordering {

/// Sets the directions of all reversible lines so that the travel in this order is as short as can
/// be: dynamic programming along the order, with both directions of the first line of a closed one.
void choose_turns(const TravelNetwork& network, TravelSequence& sequence);

}  // namespace nmk_ordering
