// usable_triangles.h: removes from a block what has no place: triangles and nodes.
#pragma once

#include <geometry/giTriBlock.h>

#include <cstdint>

namespace nmk_model {

/// Removes the nodes of a block with a coordinate that is not a number, infinite or beyond `limit`,
/// with their normals, and the triangles that have such a node. Returns the number of triangles.
std::int64_t remove_unusable(giTriBlock& block, double limit);

}  // namespace nmk_model
