// anneal_draw.h: how the ordering draws its random numbers.
//
// One step of the generator gives 15 bits. The engine and every state have a generator each.
#pragma once

#include <maths/mlRandom.h>

namespace nmk_ordering {

/// Draws an index from 0 to `count` - 1; those past 32767 are never drawn. `count` above 0.
inline int draw_index(mlRandom& random, int count) { return random.draw() % count; }

/// Draws a number from 0 to 1, both ends included.
inline double draw_uniform(mlRandom& random) { return random.draw() / double{mlRandom::max_drawn}; }

}  // namespace nmk_ordering
