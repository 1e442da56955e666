#include "ordering/flat_problems.h"

namespace nmk_ordering {

bool anneal_flat(const FlatEngine& engine, nmkAnnealState& state, nmkAnnealState& best_state,
                 int moves) {
    if (&state == &best_state) return false;
    return anneal_points_flat(engine, state, best_state, moves) ||
           anneal_reversible_flat(engine, state, best_state, moves) ||
           anneal_one_way_flat(engine, state, best_state, moves);
}

}  // namespace nmk_ordering
