// change_model.h: what `nmk model convert` changes of a model: size, blocks and normals.
#pragma once

#include "commands/model/read_model.h"

namespace nmk_model {

/// Multiplies all coordinates. Normals stay.
void scale_model(Model& model, double factor);

/// Makes one block of all; nodes are not joined. Normals stay where every block has them; names and
/// colours go.
void merge_blocks(Model& model);

/// Gives the blocks without normals a normal for each node: the mean of those of its triangles,
/// weighted by their areas, as a unit vector; zero for a node without a triangle that has area.
void add_missing_normals(Model& model);

/// Removes the normals of all blocks.
void remove_normals(Model& model);

}  // namespace nmk_model
