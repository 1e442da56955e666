// flat_anneal.h: the annealing schedule for problems in flat arrays.
//
// It makes the same moves, draws and sums as nmkAnneal makes through the operations of a state, and
// ends with the same result to the last bit. It saves three things: virtual calls, square roots of
// moves that are far too long whatever their exact length, and copies of a best order that the next
// move improves.
//
// A Problem is one order with its points. It has:
//   Move                     with default construction
//   Move draw()              draws a move
//   bool surely_rises(move, by)   true only if the move makes the order longer by at least `by`
//   double length_after(move)     the exact length after the move
//   void accept(move, length)     makes the move
//   double length, rounding()     the length, and a bound on the rounding of any length_after
//   void step_done(moves)         called after each temperature step with its number of moves
//   save_best(), restore_best(length)      to and from the Problem's own copy of the best order
//   store(state, last_move, accepted)      writes the current order to a state
//   store_best(state, length, is_current)  writes the best one, which may be the current one
#pragma once

#include <exactmath/exact_power.h>
#include <maths/mlRandom.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include "ordering/anneal_acceptance.h"
#include "ordering/anneal_schedule.h"

#include <limits>

namespace nmk_ordering {

/// The fields of the engine that the schedule starts from and updates.
struct FlatEngine {
    nmkProgressBreak* progress;
    int& iterations_used;
    double& best_energy;
    double& current_energy;
    double start_temperature;
    mlRandom& random;
};

template <class Problem, class State>
class FlatAnneal {
  public:
    FlatAnneal(const FlatEngine& engine, Problem& problem, State& state, State& best_state)
        : m_engine(engine), m_problem(problem), m_state(state), m_best_state(best_state) {}

    /// From the random start to the end of the quench. The result is in the working state.
    void run(int moves) {
        m_engine.iterations_used += anneal(moves);
        if (!m_best_is_current) m_problem.restore_best(m_engine.best_energy);
        // The current order is the best one now, whichever of the two copies held it.
        if (m_engine.progress != nullptr) {
            m_problem.store_best(m_best_state, m_engine.best_energy, true);
        }
        quench(moves);
        m_problem.store(m_state, m_last_move, m_last_accepted);
    }

  private:
    int anneal(int moves) {
        int k = 0;
        for (int stall = 0; k < max_temperature_steps; ++k) {
            const double temperature =
                m_engine.start_temperature * nmk_exact::exact_exp(k * cooling_rate);
            bool improved = k == 0 ? first_move_improves(temperature) : false;
            if (sweep<true>(temperature, k == 0 ? moves - 1 : moves)) improved = true;
            if (improved) stall = 0;
            if (++stall > max_steps_without_a_new_best) break;
            report(true);
        }
        return k;
    }

    // The random start itself may be better than the start configuration, which is noticed after
    // the first move whether or not that is accepted.
    bool first_move_improves(double temperature) {
        const bool improved = sweep<true>(temperature, 1);
        if (!(m_engine.best_energy > m_engine.current_energy)) return improved;
        m_engine.best_energy = m_engine.current_energy;
        return m_best_is_current = true;
    }

    void quench(int moves) {
        for (int step = 0; step < quench_steps; ++step) {
            sweep<false>(0.0, moves);
            report(false);
        }
    }

    // A rise of energy that only draw 0 accepts, whatever the rounding; infinity for none.
    double sure_rise(double temperature, double current) const {
        if (!(temperature >= 0.0) || current > m_problem.length) {
            return std::numeric_limits<double>::infinity();
        }
        return m_acceptance.sure_rejection() * 1.001 * temperature + m_problem.rounding();
    }

    // `moves` moves at one temperature; true if a new best was found.
    template <bool watch_best>
    bool sweep(double temperature, int moves) {
        mlRandom random = m_engine.random;
        double current = m_engine.current_energy;
        double rise = sure_rise(temperature, current);
        bool improved = false;
        typename Problem::Move move = m_last_move;
        bool accepted = m_last_accepted;
        for (int m = 0; m < moves; ++m) {
            move = m_problem.draw();
            accepted = false;
            if (m_problem.surely_rises(move, rise)) {
                if (random.draw() != 0) continue;
                const double energy = m_problem.length_after(move);
                if (!m_acceptance.accepts(current, energy, temperature, 0)) continue;
                accepted = true;
                current = energy;
            } else {
                const double energy = m_problem.length_after(move);
                if (!(current > energy) &&
                    !m_acceptance.accepts(current, energy, temperature, random.draw())) {
                    continue;
                }
                accepted = true;
                current = energy;
            }
            if constexpr (watch_best) improved |= watch(current);
            m_problem.accept(move, current);
            rise = sure_rise(temperature, current);
        }
        m_engine.random = random;
        m_engine.current_energy = current;
        m_last_move = move;
        m_last_accepted = accepted;
        m_problem.step_done(moves);
        return improved;
    }

    // Called before a move to `energy`: the best order is only copied when the move worsens it.
    bool watch(double energy) {
        if (m_engine.best_energy > energy) {
            m_engine.best_energy = energy;
            return m_best_is_current = true;
        }
        if (m_best_is_current) m_problem.save_best();
        m_best_is_current = false;
        return false;
    }

    // A reporter may look at both states, so they are brought up to date for it.
    void report(bool with_best) {
        if (m_engine.progress == nullptr) return;
        m_problem.store(m_state, m_last_move, m_last_accepted);
        if (with_best) {
            m_problem.store_best(m_best_state, m_engine.best_energy, m_best_is_current);
        }
        m_engine.progress->increment();
    }

    FlatEngine m_engine;
    Problem& m_problem;
    State& m_state;
    State& m_best_state;
    const Acceptance& m_acceptance = Acceptance::table();
    typename Problem::Move m_last_move{};
    bool m_last_accepted = false;
    bool m_best_is_current = false;
};

}  // namespace nmk_ordering
