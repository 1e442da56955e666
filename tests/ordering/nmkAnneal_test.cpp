// nmkAnneal_test.cpp: the schedule as a caller's own state and progress reporter see it.

#include <gtest/gtest.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::Engine;

// A state whose energies come from a function, and which logs its calls.
class ScriptedState : public nmkAnnealState {
  public:
    int moves = 1;
    double start = 10.0;
    double random_energy = 10.0;
    std::function<double(int)> proposal = [](int) { return 20.0; };
    std::string* calls = nullptr;
    char name = 'w';

    int proposals = 0;
    int accepted = 0;
    int copies = 0;
    int configuration = 0;

    int size() override { return note("size"), moves; }
    double initialise() override { return note("initialise"), start; }
    double randomise() override { return note("randomise"), configuration = -1, random_energy; }
    double candidate_new_state() override { return note("candidate"), proposal(proposals++); }
    void accept_new_state() override {
        note("accept");
        configuration = ++accepted;
    }
    nmkAnnealState& operator=(const nmkAnnealState& other) override {
        note("copy");
        ++copies;
        configuration = static_cast<const ScriptedState&>(other).configuration;
        return *this;
    }

  private:
    void note(const char* call) {
        if (calls != nullptr) (*calls += name) += std::string(".") + call + ' ';
    }
};

class LoggingProgress : public nmkProgressBreak {
  public:
    int send_progress_bar_to_0(const char* text) override {
        log += std::string("start[") + text + "] ";
        return 1;
    }
    void set_range(double range) override { log += "range " + std::to_string(range) + " "; }
    int increment() override { return ++steps; }
    int send_progress_bar_to_100() override {
        log += "end after " + std::to_string(steps);
        return 1;
    }
    std::string log;
    int steps = 0;
};

// Counts how often the best order got longer between two increments, beyond the rounding by which
// the running sum of the energy differs from a length that is computed afresh.
class NonRising : public nmkProgressBreak {
  public:
    explicit NonRising(nmkAnnealOrderState& state) : m_best(state) {}
    int increment() override {
        ++increments;
        const double now = m_best.length();
        if (now > length + 1e-9 && rises++ == 0) first_rise = increments;
        length = now;
        return 0;
    }

    double length = std::numeric_limits<double>::max();
    int increments = 0;
    int rises = 0;
    int first_rise = 0;

  private:
    nmkAnnealOrderState& m_best;
};

int rises_seen(nmkAnnealOrderState& state, nmkAnnealOrderState& best) {
    NonRising watching(best);
    nmkAnneal anneal(state, best);
    anneal.set_progress(&watching);
    anneal.simulate();
    return watching.rises;
}

// The first `count` words of a text.
std::string first_words(const std::string& text, int count) {
    std::size_t end = 0;
    for (; count > 0 && end != std::string::npos; --count) end = text.find(' ', end + 1);
    return text.substr(0, end);
}

TEST(nmkAnneal, calls_the_state_in_the_order_of_the_schedule) {
    ScriptedState state, best;
    std::string calls;
    state.calls = best.calls = &calls;
    best.name = 'b';
    state.proposal = [](int k) { return k == 0 ? 5.0 : k == 1 ? 4.0 : 1e9; };
    nmkAnneal anneal(state, best);
    anneal.seed(1);
    anneal.simulate();
    EXPECT_EQ(first_words(calls, 11),
              "w.size w.initialise b.copy w.randomise w.candidate w.accept b.copy w.candidate "
              "w.accept b.copy w.candidate");
    const std::string tail = "w.candidate b.copy ";
    EXPECT_EQ(calls.substr(calls.size() - tail.size()), tail);
    EXPECT_NE(calls.find("w.candidate w.copy w.candidate"), std::string::npos);
}

TEST(nmkAnneal, leaves_the_start_configuration_when_there_is_nothing_to_anneal) {
    ScriptedState state, best;
    state.start = -1.0;
    state.configuration = 7;
    LoggingProgress progress;
    Engine anneal(state, best);
    anneal.set_progress(&progress);
    anneal.simulate();
    EXPECT_EQ(best.configuration, 7);
    EXPECT_EQ(best.copies, 1);
    EXPECT_EQ(state.proposals, 0);
    EXPECT_EQ(anneal.num_iterations_used(), 0);
    EXPECT_EQ(anneal.best_energy, -1.0);
    EXPECT_EQ(progress.log, "");
    EXPECT_EQ(progress.steps, 0);
}

TEST(nmkAnneal, ends_by_the_stall_limit_when_there_are_no_moves) {
    ScriptedState state, best;
    state.moves = 0;
    nmkAnneal anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(state.proposals, 0);
    EXPECT_EQ(anneal.num_iterations_used(), 7500 + 7500);
}

TEST(nmkAnneal, ends_after_7501_steps_without_any_improvement) {
    ScriptedState state, best;
    nmkAnneal anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(state.proposals, 7501 + 7500);
    EXPECT_EQ(anneal.num_iterations_used(), 15000);
    anneal.simulate();
    EXPECT_EQ(anneal.num_iterations_used(), 30000);
}

TEST(nmkAnneal, keeps_the_start_when_every_move_is_worse) {
    ScriptedState state, best;
    state.configuration = 3;
    state.proposal = [](int) { return std::numeric_limits<double>::infinity(); };
    nmkAnneal anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(state.accepted, 0);
    EXPECT_EQ(best.configuration, 3);
}

TEST(nmkAnneal, counts_the_steps_before_a_late_improvement_too) {
    ScriptedState state, best;
    state.proposal = [](int k) { return k == 99 ? 1.0 : std::numeric_limits<double>::infinity(); };
    nmkAnneal anneal(state, best);
    anneal.simulate();
    // Step 99 sets the stall count to 0 and then 1; the count exceeds 7500 at step 99 + 7500.
    EXPECT_EQ(anneal.num_iterations_used(), 99 + 7500 + 7500);
}

TEST(nmkAnneal, reports_progress_and_ignores_what_the_reporter_returns) {
    ScriptedState state, best;
    state.moves = 2;
    LoggingProgress progress;
    nmkAnneal anneal(state, best);
    anneal.set_progress(&progress);
    anneal.simulate();
    EXPECT_EQ(progress.log, "start[Sorting\n%3d%% completed] range 15802.000000 end after 15000");
}

TEST(nmkAnneal, keeps_a_random_start_that_is_better_after_the_first_move) {
    ScriptedState state, best;
    state.random_energy = 2.0;
    state.proposal = [](int) { return std::numeric_limits<double>::infinity(); };
    Engine anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(best.configuration, -1);
    EXPECT_EQ(anneal.best_energy, 2.0);
    EXPECT_EQ(best.copies, 3);
}

TEST(nmkAnneal, never_accepts_an_equal_move_at_temperature_zero_but_draws_for_it) {
    ScriptedState state, best;
    state.random_energy = 0.0;  // so is the temperature
    state.proposal = [](int) { return 0.0; };
    Engine anneal(state, best);
    anneal.seed(42);
    anneal.simulate();
    EXPECT_EQ(state.accepted, 0);
    mlRandom random(42);
    for (int k = 0; k < 7501 + 7500; ++k) random.draw();
    EXPECT_EQ(anneal.random.word, random.word);
}

// The word before the one from which the generator draws a number.
std::int32_t seed_that_draws(int number) {
    mlRandom random(1);
    for (;;) {
        const std::uint32_t word = random.word;
        if (random.draw() == number) return static_cast<std::int32_t>(word);
    }
}

TEST(nmkAnneal, accepts_an_equal_move_unless_the_number_drawn_is_one) {
    for (const int drawn : {32766, 32767}) {
        ScriptedState state, best;
        state.proposal = [](int k) { return k == 0 ? 10.0 : 1e300; };
        nmkAnneal anneal(state, best);
        anneal.seed(seed_that_draws(drawn));
        anneal.simulate();
        EXPECT_EQ(state.accepted, drawn == 32767 ? 0 : 1) << drawn;
    }
}

TEST(nmkAnneal, continues_the_sequence_of_its_generator_in_a_second_run) {
    ScriptedState state, best;
    state.random_energy = 0.0;
    state.proposal = [](int) { return 0.0; };
    Engine anneal(state, best);
    anneal.simulate();
    anneal.simulate();
    mlRandom random(1);
    for (int k = 0; k < 2 * (7501 + 7500); ++k) random.draw();
    EXPECT_EQ(anneal.random.word, random.word);
}

TEST(nmkAnneal, draws_nothing_for_an_improving_move) {
    ScriptedState state, best;
    state.random_energy = 1e9;
    Engine anneal(state, best);
    anneal.seed(42);
    state.proposal = [](int k) { return k < 100 ? -1.0 - k : 1e300; };
    anneal.simulate();
    EXPECT_EQ(state.accepted, 100);
    mlRandom random(42);
    for (int k = 0; k < state.proposals - 100; ++k) random.draw();
    EXPECT_EQ(anneal.random.word, random.word);
}

TEST(nmkAnneal, compares_the_quench_with_the_last_energy_of_the_annealing) {
    ScriptedState state, best;
    // One accepted rise at the first step; the quench then accepts 11 as an improvement on 12,
    // though the restored configuration had 10.
    state.random_energy = 1e9;
    int quench_starts_at = -1;
    state.proposal = [&](int k) {
        if (k == 0) return 12.0;
        if (state.copies == 1 && quench_starts_at < 0) quench_starts_at = k;
        return k == quench_starts_at ? 11.0 : 1e300;
    };
    Engine anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(anneal.best_energy, 10.0);
    EXPECT_EQ(anneal.current_energy, 11.0);
    EXPECT_EQ(state.accepted, 2);
}

TEST(nmkAnneal, ends_also_when_energies_are_nan) {
    ScriptedState state, best;
    state.random_energy = std::nan("");
    state.proposal = [](int) { return std::nan(""); };
    nmkAnneal anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(state.accepted, 0);
    EXPECT_EQ(anneal.num_iterations_used(), 15000);
}

TEST(nmkAnneal, accepts_by_the_power_law) {
    EXPECT_EQ(Engine::probability(1.0, 2.0, 0.0), 0.0);
    EXPECT_EQ(Engine::probability(5.0, 5.0, 3.0), 1.0);
    const double power = std::pow(2.0 * 0.10000000000000009 / 3.0 + 1.0, 9.999999999999991);
    EXPECT_DOUBLE_EQ(Engine::probability(1.0, 3.0, 3.0), 1.0 / power);
    EXPECT_EQ(Engine::probability(0.0, 1e300, 1e-300), 0.0);
}

TEST(nmkAnneal, cools_by_a_hundredth_a_step) {
    ScriptedState state, best;
    state.random_energy = 50.0;
    Engine anneal(state, best);
    anneal.simulate();
    EXPECT_EQ(anneal.temperature(0), 50.0);
    EXPECT_DOUBLE_EQ(anneal.temperature(100), 50.0 * std::exp(-1.0));
    EXPECT_EQ(anneal.temperature(999999), 0.0);
}

TEST(nmkAnneal, gives_equal_results_for_equal_seeds_and_leaves_the_states_generators_alone) {
    const auto points = plain::spread_points(plain::Spread::square, 12, 31);
    const giPoint3coPageArr array = plain::paged(points);
    std::vector<int> orders[2];
    for (std::vector<int>& order : orders) {
        nmkAnnealStatePoints state(&array), best(&array);
        plain::Inside::set_word(best, 99u);
        nmkAnneal anneal(state, best);
        anneal.seed(-5);
        EXPECT_EQ(plain::Inside::word(state), 1u);
        anneal.simulate();
        EXPECT_EQ(plain::Inside::word(best), 99u);
        order = plain::items_of(best);
    }
    EXPECT_EQ(orders[0], orders[1]);
}

// With a reporter the states are brought up to date at each step; the result is the same.
TEST(nmkAnneal, gives_the_same_order_with_a_reporter) {
    const auto starts = plain::spread_points(plain::Spread::square, 12, 32);
    const auto ends = plain::spread_points(plain::Spread::square, 12, 33);
    const giPoint3coPageArr from = plain::paged(starts), to = plain::paged(ends);
    const auto order = [&](auto& state, auto& best, nmkProgressBreak* progress) {
        nmkAnneal anneal(state, best);
        anneal.set_progress(progress);
        anneal.simulate();
        return plain::items_of(best);
    };
    LoggingProgress progress;
    nmkAnnealStatePoints p1(&from), p2(&from), p3(&from), p4(&from);
    EXPECT_EQ(order(p1, p2, nullptr), order(p3, p4, &progress));
    nmkAnnealStateReversibleLines l1(from, to), l2(from, to), l3(from, to), l4(from, to);
    EXPECT_EQ(order(l1, l2, nullptr), order(l3, l4, &progress));
    nmkAnnealStateNonReversible o1(from, to, 0), o2(from, to, 0), o3(from, to, 0), o4(from, to, 0);
    EXPECT_EQ(order(o1, o2, nullptr), order(o3, o4, &progress));
}

// Ten reversible lines whose quench starts from the order that the annealing held as its best.
TEST(nmkAnneal, shows_a_reporter_the_best_order_of_the_annealing_while_it_quenches) {
    const double coordinates[10][4] = {{9, 9, 6, 6}, {9, 1, 8, 7}, {7, 8, 2, 0}, {8, 2, 3, 9},
                                       {5, 2, 0, 3}, {9, 4, 5, 7}, {3, 8, 5, 9}, {2, 6, 6, 0},
                                       {1, 5, 7, 9}, {7, 4, 0, 7}};
    giPoint3coPageArr starts, ends;
    for (const auto& [x, y, end_x, end_y] : coordinates) {
        starts.add(giPoint3(x, y, 0));
        ends.add(giPoint3(end_x, end_y, 0));
    }
    nmkAnnealStateReversibleLines state(starts, ends), best(starts, ends);
    NonRising watching(best);
    nmkAnneal anneal(state, best);
    anneal.set_progress(&watching);
    anneal.simulate();
    EXPECT_EQ(watching.rises, 0) << "first at increment " << watching.first_rise << " of "
                                 << watching.increments;
    EXPECT_GT(watching.increments, 15000);
}

TEST(nmkAnneal, shows_a_reporter_a_best_order_that_never_gets_longer) {
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        const plain::TwoArrays arrays(plain::Spread::grid, 10, seed);
        nmkAnnealStatePoints points(&arrays.starts), best_points(&arrays.starts);
        nmkAnnealStateReversibleLines lines(arrays.starts, arrays.ends);
        nmkAnnealStateReversibleLines best_lines(arrays.starts, arrays.ends);
        nmkAnnealStateNonReversible one_way(arrays.starts, arrays.ends, 0);
        nmkAnnealStateNonReversible best_one_way(arrays.starts, arrays.ends, 0);
        EXPECT_EQ(rises_seen(points, best_points), 0) << "points, seed " << seed;
        EXPECT_EQ(rises_seen(lines, best_lines), 0) << "lines, seed " << seed;
        EXPECT_EQ(rises_seen(one_way, best_one_way), 0) << "one-way lines, seed " << seed;
    }
}

TEST(nmkAnneal, runs_on_two_threads_with_states_of_their_own) {
    const auto points = plain::spread_points(plain::Spread::square, 15, 35);
    const giPoint3coPageArr array = plain::paged(points);
    std::vector<int> orders[2];
    const auto work = [&array](std::vector<int>& order) {
        nmkAnnealStatePoints state(&array), best(&array);
        nmkAnneal anneal(state, best);
        anneal.simulate();
        order = plain::items_of(best);
    };
    std::thread first(work, std::ref(orders[0])), second(work, std::ref(orders[1]));
    first.join();
    second.join();
    EXPECT_EQ(orders[0], orders[1]);
    EXPECT_EQ(orders[0].size(), 15u);
}

}  // namespace
