// travel_start.h: the order that the search starts from.
#pragma once

#include "travel_network.h"

namespace nmk_ordering {

/// Groups and single items along a Hilbert curve in the plane of the two longest sides of their
/// box, the items of a group that may change its order likewise; given ends at their places.
TravelSequence start_sequence(const TravelNetwork& network);

}  // namespace nmk_ordering
