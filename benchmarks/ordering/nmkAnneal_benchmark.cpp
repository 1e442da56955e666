// nmkAnneal_benchmark.cpp: the annealer beside the bare loop of tests/ordering/plain_anneal.h.
//
// One line for each measurement: name, seconds ours, seconds of the peer, ratio, ratio to reach.
// The best of some repeats counts. Both must give the same order, else the line says DIFFERS.
// With an argument, only measurements whose name contains it are made.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits>
#include <string>

#include "ordering/plain_problems.h"

namespace {

const char* only = "";

double seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A caller's own state: the bare points problem behind the virtual operations.
class Own_state : public nmkAnnealState {
  public:
    explicit Own_state(const std::vector<plain::Point>& points) : problem(points) {}
    int size() override { return problem.n(); }
    double initialise() override { return problem.initialise(); }
    double randomise() override { return problem.randomise(); }
    double candidate_new_state() override { return problem.propose(); }
    void accept_new_state() override { problem.accept(); }
    nmkAnnealState& operator=(const nmkAnnealState& other) override {
        problem.take(static_cast<const Own_state&>(other).problem);
        return *this;
    }
    plain::Points problem;
};

template <class Make_ours, class Make_peer>
void measure(const std::string& name, double target, int repeats, Make_ours ours, Make_peer peer) {
    if (name.find(only) == std::string::npos) return;
    double our_time = std::numeric_limits<double>::max();
    double peer_time = our_time;
    bool same = true;
    for (int repeat = 0; repeat < repeats; ++repeat) {
        std::vector<int> our_items, peer_items;
        our_time = std::min(our_time, seconds([&] { our_items = ours(); }));
        peer_time = std::min(peer_time, seconds([&] { peer_items = peer(); }));
        same = same && our_items == peer_items;
    }
    std::printf("%-28s %9.4f %9.4f  %6.3f  %5.2f%s\n", name.c_str(), our_time, peer_time,
                our_time / peer_time, target, same ? "" : "  DIFFERS");
    std::fflush(stdout);
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
            Own_state state(points), best(points);
            nmkAnneal anneal(state, best);
            anneal.simulate();
            return best.problem.items;
        },
        [&] { return peer_order(plain::Points(points), plain::Points(points)); });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) only = argv[1];
    std::printf("%-28s %9s %9s  %6s  %5s\n", "name", "ours_s", "peer_s", "ratio", "reach");
    measure_points(100, 0.6, 5);
    measure_points(1000, 0.6, 2);
    measure_points(10000, 0.6, 1);
    measure_lines(10, 0.7, 9);
    measure_lines(100, 0.7, 5);
    measure_lines(1000, 0.7, 1);
    measure_own_state(100, 1.3, 5);
    measure_own_state(1000, 1.3, 2);
}
