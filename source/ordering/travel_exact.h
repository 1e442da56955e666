// travel_exact.h: the shortest order of a few items.
#pragma once

#include "travel_network.h"

namespace nmk_ordering {

/// The shortest sequence of at most nmkTravelOrder::max_exact_items items: dynamic programming over
/// the subsets that were travelled, the last item of each and its direction (Held and Karp, J. SIAM
/// 10, 1962). Of equals the one with the lowest numbers is found.
TravelSequence exact_sequence(const TravelNetwork& network);

}  // namespace nmk_ordering
