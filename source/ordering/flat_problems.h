// flat_problems.h: the entry to the loops that run on flat arrays.
#pragma once

#include "ordering/anneal_schedule.h"
#include "ordering/flat_access.h"
#include "ordering/flat_anneal.h"

namespace nmk_ordering {

/// Anneals and quenches from the random start in `state`, if both states are of one of the types
/// that are run flat; false, with nothing done, if not. The result is then in `state`.
bool anneal_flat(const FlatEngine& engine, nmkAnnealState& state, nmkAnnealState& best_state,
                 int moves);

bool anneal_points_flat(const FlatEngine& engine, nmkAnnealState& state, nmkAnnealState& best_state,
                        int moves);
bool anneal_reversible_flat(const FlatEngine& engine, nmkAnnealState& state,
                            nmkAnnealState& best_state, int moves);
bool anneal_one_way_flat(const FlatEngine& engine, nmkAnnealState& state,
                         nmkAnnealState& best_state, int moves);

/// Calls `run` with both states, where they are exactly of the type State and have enough items to
/// be annealed; else returns false.
template <class State, class Run>
bool with_exact_states(nmkAnnealState& state, nmkAnnealState& best_state, const Run& run) {
    State* const working = FlatAccess::exactly<State>(state);
    State* const best = FlatAccess::exactly<State>(best_state);
    if (working == nullptr || best == nullptr) return false;
    if (working->num_items() <= max_items_not_annealed) return false;
    run(*working, *best);
    return true;
}

/// Runs the schedule on a Problem that is made of the two states.
template <class Problem, class State>
void run_flat(const FlatEngine& engine, State& working, State& best, int moves) {
    Problem problem(working, best);
    FlatAnneal<Problem, State>(engine, problem, working, best).run(moves);
}

}  // namespace nmk_ordering
