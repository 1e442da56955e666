// nmkAnneal_benchmark.cpp: the annealer beside the bare loop of tests/ordering/plain_anneal.h.
//
// One line for each measurement: name, seconds ours, seconds of the peer, ratio, ratio to reach.
// The best of some repeats counts. Both must give the same order, else the line says so.
// With an argument, only measurements whose name contains it are made.

#include <string>

#include "ordering/plain_problems.h"
#include "stopwatch.h"

namespace {

const char* only = "";

bool all_reached = true;

// A caller's own state: the bare points problem behind the virtual operations.
class OwnState : public nmkAnnealState {
  public:
    explicit OwnState(const std::vector<plain::Point>& points) : problem(points) {}
    int size() override { return problem.n(); }
    double initialise() override { return problem.initialise(); }
    double randomise() override { return problem.randomise(); }
    double candidate_new_state() override { return problem.propose(); }
    void accept_new_state() override { problem.accept(); }
    nmkAnnealState& operator=(const nmkAnnealState& other) override {
        problem.take(static_cast<const OwnState&>(other).problem);
        return *this;
    }
    plain::Points problem;
};

template <class Make_ours, class Make_peer>
void measure(const std::string& name, double target, int repeats, Make_ours ours, Make_peer peer) {
    if (name.find(only) == std::string::npos) return;
    const auto taken = stopwatch::in_turns(repeats, ours, peer);
    all_reached &= stopwatch::report(name.c_str(), taken.ours, taken.peer, target, taken.same);
}

template <class Problem>
std::vector<int> peer_order(Problem state, Problem best) {
    plain::Anneal<Problem> anneal(state, best);
    anneal.simulate();
    return best.items;
}

template <class State>
std::vector<int> our_order(State& state, State& best) {
    nmkAnneal anneal(state, best);
    anneal.simulate();
    return plain::items_of(best);
}

void measure_points(int n, double target, int repeats) {
    const auto points = plain::spread_points(plain::Spread::square, n, 1);
    const giPoint3coPageArr array = plain::paged(points);
    measure(
        "points_" + std::to_string(n), target, repeats,
        [&] {
            nmkAnnealStatePoints state(&array), best(&array);
            return our_order(state, best);
        },
        [&] { return peer_order(plain::Points(points), plain::Points(points)); });
}

void measure_lines(int n, double target, int repeats) {
    const auto starts = plain::spread_points(plain::Spread::square, n, 2);
    const auto ends = plain::spread_points(plain::Spread::square, n, 3);
    const giPoint3coPageArr from = plain::paged(starts), to = plain::paged(ends);
    measure(
        "reversible_lines_" + std::to_string(n), target, repeats,
        [&] {
            nmkAnnealStateReversibleLines state(from, to), best(from, to);
            return our_order(state, best);
        },
        [&] { return peer_order(plain::Lines(starts, ends), plain::Lines(starts, ends)); });
    measure(
        "one_way_lines_" + std::to_string(n), target, repeats,
        [&] {
            nmkAnnealStateNonReversible state(from, to, 0), best(from, to, 0);
            return our_order(state, best);
        },
        [&] {
            return peer_order(plain::OneWay(starts, ends, false),
                              plain::OneWay(starts, ends, false));
        });
}

void measure_own_state(int n, double target, int repeats) {
    const auto points = plain::spread_points(plain::Spread::square, n, 1);
    measure(
        "own_state_" + std::to_string(n), target, repeats,
        [&] {
            OwnState state(points), best(points);
            nmkAnneal anneal(state, best);
            anneal.simulate();
            return best.problem.items;
        },
        [&] { return peer_order(plain::Points(points), plain::Points(points)); });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) only = argv[1];
    const int hundred = stopwatch::size(100, 20);
    measure_points(hundred, 0.6, 5);
    measure_lines(10, 0.7, 9);
    measure_lines(hundred, 0.7, 5);
    measure_own_state(hundred, 1.0, 5);
    if (stopwatch::is_small()) return all_reached ? 0 : 1;
    measure_points(1000, 0.4, 2);
    measure_points(10000, 0.5, 1);
    measure_lines(1000, 0.7, 1);
    measure_own_state(1000, 1.0, 2);
    return all_reached ? 0 : 1;
}
