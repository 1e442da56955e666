// nmkAnneal: the simulated-annealing engine behind every shortest-path ordering.
//
// It knows nothing of points or lines: it drives two nmkAnnealState objects through a fixed
// schedule (random start, exponential cooling until nothing improves, a quench at temperature
// zero) and leaves the best configuration in the second. The acceptance rule is the generalised
// one of Tsallis and Stariolo, "Generalized simulated annealing", Physica A 233 (1996), with
// q = 1.1. The seed is the only parameter.
//
// Separate engines on separate states may run on separate threads.
#pragma once

#include <maths/mlRandom.h>
#include <nmktoolbox/export.h>

#include <limits>

class nmkAnnealState;
class nmkProgressBreak;

class NMKTOOLBOX_EXPORT nmkAnneal {
  public:
    /// Both states are borrowed, and must be of the same concrete type.
    ///
    ///   working_state  the working configuration
    ///   result_state   receives the best configuration
    nmkAnneal(nmkAnnealState& working_state, nmkAnnealState& result_state);
    ~nmkAnneal();
    nmkAnneal(const nmkAnneal&) = delete;
    nmkAnneal& operator=(const nmkAnneal&) = delete;

    /// Sets the word of the engine's generator; the generators of the states stay as they are.
    void seed(int value);

    /// `reporter` is borrowed; null for none. The results of its operations are ignored: the
    /// schedule cannot be cut short. While it is called both states are up to date.
    void set_progress(nmkProgressBreak* reporter);

    /// Runs the whole schedule. The result is in the best state, also where initialise of the state
    /// returned that there is nothing to anneal.
    ///
    /// May be run again: the steps are then added up and the generator continues its sequence.
    void simulate();

    /// Temperature steps of all calls of simulate, those of the quench included.
    int num_iterations_used();

  protected:
    /// The temperature of step `step` of the cooling.
    double temperature(int step);

    /// Probability that a move from energy `current` to `candidate` is accepted.
    ///
    /// 0 at temperature zero. The same on every processor to the last bit.
    static double probability(double current, double candidate, double at_temperature);

    nmkAnnealState& state;
    nmkAnnealState& best_state;
    nmkProgressBreak* progress = nullptr;
    int iterations_used = 0;
    double best_energy = std::numeric_limits<double>::max();
    double current_energy = std::numeric_limits<double>::max();
    double start_temperature = std::numeric_limits<double>::lowest();
    mlRandom random{1};

  private:
    void anneal_cycle(double at_temperature);
    int anneal(int moves);
    void quench(int moves);
    void begin_progress(int moves);
};
