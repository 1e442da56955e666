// flat_problems.h: the entry to the loops that run on flat arrays.
#pragma once

#include "ordering/flat_anneal.h"

class nmkAnnealState;

namespace nmk_ordering {

/// Anneals and quenches from the random start in `state`, if both states are of one of the types
/// that are run flat; false, with nothing done, if not. The answer is then in `state`.
bool anneal_flat(const Flat_engine& engine, nmkAnnealState& state, nmkAnnealState& best_state,
                 int moves);

bool anneal_points_flat(const Flat_engine& engine, nmkAnnealState& state,
                        nmkAnnealState& best_state, int moves);
bool anneal_reversible_flat(const Flat_engine& engine, nmkAnnealState& state,
                            nmkAnnealState& best_state, int moves);
bool anneal_one_way_flat(const Flat_engine& engine, nmkAnnealState& state,
                         nmkAnnealState& best_state, int moves);

}  // namespace nmk_ordering
