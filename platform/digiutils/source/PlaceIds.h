// PlaceIds.h: which nodes of a block are at the same place.
#pragma once

#include <geometry/giBoxArrPoint3.h>

#include <cstdint>
#include <vector>

namespace nmk_digiutils {

/// For each node the index of the node that it belongs to: itself, or an earlier one that is at
/// most `tolerance` away and belongs to none before; -1 for a node with a coordinate that is NaN.
/// With a tolerance that is not above 0 only nodes at equal places belong together.
std::vector<std::int32_t> place_ids(const giBoxArrPoint3& nodes, double tolerance);

}  // namespace nmk_digiutils
