#include <nmktoolbox/ordering/nmkAnneal.h>

#include <exactmath/exact_power.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkAnnealState.h>

#include "ordering/anneal_acceptance.h"
#include "ordering/anneal_schedule.h"
#include "ordering/flat_problems.h"

using nmk_ordering::Acceptance;

nmkAnneal::nmkAnneal(nmkAnnealState& working_state, nmkAnnealState& result_state)
    : state(working_state), best_state(result_state) {}

nmkAnneal::~nmkAnneal() = default;

void nmkAnneal::seed(int value) { random.word = static_cast<std::uint32_t>(value); }

void nmkAnneal::set_progress(nmkProgressBreak* reporter) { progress = reporter; }

void nmkAnneal::simulate() {
    const int moves = state.size();
    const double energy = state.initialise();
    best_state = state;
    best_energy = current_energy = energy;
    if (energy < 0.0) return;

    begin_progress(moves);
    // Deliberate: best_energy stays that of the start configuration, so that a worse random one
    // does not replace it.
    current_energy = start_temperature = state.randomise();
    if (!nmk_ordering::anneal_flat(
            {progress, iterations_used, best_energy, current_energy, start_temperature, random},
            state, best_state, moves)) {
        iterations_used += anneal(moves);
        // Deliberate: current_energy is not set back to best_energy. Until the first accepted move
        // the quench compares with the last energy of the annealing.
        state = best_state;
        quench(moves);
    }
    if (progress != nullptr) progress->send_progress_bar_to_100();
    // Deliberate: the end of the quench is the result, whatever was best before.
    best_state = state;
    iterations_used += nmk_ordering::quench_steps;
}

int nmkAnneal::num_iterations_used() { return iterations_used; }

double nmkAnneal::temperature(int step) {
    return start_temperature * nmk_exact::exact_exp(step * nmk_ordering::cooling_rate);
}

double nmkAnneal::probability(double current, double candidate, double at_temperature) {
    return Acceptance::probability(current, candidate, at_temperature);
}

// Deliberate: an improving move draws no random number, any other draws one also at temperature
// zero, where none is accepted.
void nmkAnneal::anneal_cycle(double at_temperature) {
    const double energy = state.candidate_new_state();
    if (!(current_energy > energy)) {
        const int draw = random.draw();
        if (!Acceptance::table().accepts(current_energy, energy, at_temperature, draw)) return;
    }
    state.accept_new_state();
    current_energy = energy;
}

// Returns the number of steps until the stall limit is reached, without the step that reached it.
int nmkAnneal::anneal(int moves) {
    int stall = 0;
    int k = 0;
    for (; k < nmk_ordering::max_temperature_steps; ++k) {
        const double at_temperature = temperature(k);
        for (int move = 0; move < moves; ++move) {
            anneal_cycle(at_temperature);
            if (best_energy > current_energy) {
                best_state = state;
                stall = 0;
                best_energy = current_energy;
            }
        }
        if (++stall > nmk_ordering::max_steps_without_a_new_best) break;
        if (progress != nullptr) progress->increment();
    }
    return k;
}

// Deliberate: neither the best energy nor the best state is updated here.
void nmkAnneal::quench(int moves) {
    for (int step = 0; step < nmk_ordering::quench_steps; ++step) {
        for (int move = 0; move < moves; ++move) anneal_cycle(0.0);
        if (progress != nullptr) progress->increment();
    }
}

void nmkAnneal::begin_progress(int moves) {
    if (progress == nullptr) return;
    progress->send_progress_bar_to_0("Sorting\n%3d%% completed");
    progress->set_range(nmk_ordering::expected_progress_range(moves));
}
