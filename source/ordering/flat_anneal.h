// flat_anneal.h: the annealing schedule for problems that lie in flat arrays.
//
// The same moves, draws and sums as nmkAnneal makes through the operations of a state, and the same
// end to the last bit, with three things spared: virtual calls, square roots of moves that are far
// too long whatever their exact length, and copies of a best order that the next move makes better.
//
// A Problem is one order with its points. It has:
//   Move                     with default construction
//   Move draw()              draws a move
//   bool surely_rises(move, by)   true only if the move makes the order longer by at least `by`
//   double length_after(move)     the exact length after the move
//   void accept(move, length)     makes the move
//   double length, rounding()     the length, and a bound on the rounding of any length_after
//   step_done(work)               told after each temperature step how far moves reached
//   save_best(), restore_best(), store(...), store_best(...)
#pragma once

#include <exactmath/exact_power.h>
#include <maths/mlRandom.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include "ordering/anneal_acceptance.h"
#include "ordering/anneal_schedule.h"

#include <limits>

namespace nmk_ordering {

/// The fields of the engine that the schedule goes on from and leaves.
struct Flat_engine {
    nmkProgressBreak* progress;
    int& iterations_used;
    double& best_energy;
    double& current_energy;
    double start_temperature;
    mlRandom& random;
};

template <class Problem, class State>
class Flat_anneal {
  public:
    Flat_anneal(const Flat_engine& fields, Problem& flat_problem, State& working, State& result)
        : engine(fields), problem(flat_problem), state(working), best_state(result) {}

    /// From the random start to the end of the quench. The working state holds the answer.
    void run(int moves) {
        engine.iterations_used += anneal(moves);
        if (!best_is_current) problem.restore_best(engine.best_energy);
        if (engine.progress != nullptr) problem.store_best(best_state, engine.best_energy, false);
        quench(moves);
        problem.store(state, last_move, last_accepted);
    }

  private:
    int anneal(int moves) {
        int k = 0;
        for (int stall = 0; k < most_temperature_steps; ++k) {
            const double temperature =
                engine.start_temperature * nmk_exact::exact_exp(k * cooling_rate);
            bool improved = k == 0 ? first_move_improves(temperature) : false;
            if (sweep<true>(temperature, k == 0 ? moves - 1 : moves)) improved = true;
            if (improved) stall = 0;
            if (++stall > most_steps_without_a_new_best) break;
            report(true);
        }
        return k;
    }

    // The random start itself may be better than the start configuration, which is noticed after
    // the first move whether or not that is accepted.
    bool first_move_improves(double temperature) {
        const bool improved = sweep<true>(temperature, 1);
        if (!(engine.best_energy > engine.current_energy)) return improved;
        engine.best_energy = engine.current_energy;
        return best_is_current = true;
    }

    void quench(int moves) {
        for (int step = 0; step < quench_steps; ++step) {
            sweep<false>(0.0, moves);
            report(false);
        }
    }

    // A rise of energy that only draw 0 accepts, whatever the rounding; infinity for none.
    double sure_rise(double temperature, double current) const {
        if (!(temperature >= 0.0) || current > problem.length) {
            return std::numeric_limits<double>::infinity();
        }
        return acceptance.sure_rejection() * 1.001 * temperature + problem.rounding();
    }

    // `moves` moves at one temperature; true if a new best was met.
    template <bool watch_best>
    bool sweep(double temperature, int moves) {
        mlRandom random = engine.random;
        double current = engine.current_energy;
        double rise = sure_rise(temperature, current);
        bool improved = false;
        typename Problem::Move move = last_move;
        bool accepted = last_accepted;
        for (int m = 0; m < moves; ++m) {
            move = problem.draw();
            accepted = false;
            if (problem.surely_rises(move, rise)) {
                if (random.draw() != 0) continue;
                const double energy = problem.length_after(move);
                if (!acceptance.accepts(current, energy, temperature, 0)) continue;
                accepted = true;
                current = energy;
            } else {
                const double energy = problem.length_after(move);
                if (!(current > energy) &&
                    !acceptance.accepts(current, energy, temperature, random.draw())) {
                    continue;
                }
                accepted = true;
                current = energy;
            }
            if constexpr (watch_best) improved |= watch(current);
            problem.accept(move, current);
            rise = sure_rise(temperature, current);
        }
        engine.random = random;
        engine.current_energy = current;
        last_move = move;
        last_accepted = accepted;
        problem.step_done(moves);
        return improved;
    }

    // Before a move to `energy`: the best order is only copied when the move spoils it.
    bool watch(double energy) {
        if (engine.best_energy > energy) {
            engine.best_energy = energy;
            return best_is_current = true;
        }
        if (best_is_current) problem.save_best();
        best_is_current = false;
        return false;
    }

    // A reporter may look at both states, so they are brought up to date for it.
    void report(bool with_best) {
        if (engine.progress == nullptr) return;
        problem.store(state, last_move, last_accepted);
        if (with_best) problem.store_best(best_state, engine.best_energy, best_is_current);
        engine.progress->increment();
    }

    Flat_engine engine;
    Problem& problem;
    State& state;
    State& best_state;
    const Acceptance& acceptance = Acceptance::table();
    typename Problem::Move last_move{};
    bool last_accepted = false;
    bool best_is_current = false;
};

}  // namespace nmk_ordering
