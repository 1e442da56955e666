#include <nmktoolbox/ordering/nmkAnnealStateTester.h>

#include <apsl/apHighResTime.h>
#include <nmktoolbox/ordering/nmkAnneal.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>
#include <utils/utAssert.h>

#include <ostream>
#include <unordered_set>

namespace {

constexpr int first_seed = 1000;

// The unvisited item nearest to `from`, -1 when all are visited; the lowest number wins a tie.
int nearest_unvisited(nmkAnnealOrderState& state, int from, const std::unordered_set<int>& visited,
                      double& nearest) {
    int found = -1;
    for (int item = 0; item < state.num_items(); ++item) {
        if (visited.count(item) != 0) continue;
        const double distance = state.distance(from, item);
        if (found < 0 || distance < nearest) {
            found = item;
            nearest = distance;
        }
    }
    return found;
}

double nearest_neighbour_length(nmkAnnealOrderState& state, int closed) {
    if (state.num_items() < 1) return 0.0;
    std::unordered_set<int> visited{0};
    double length = 0.0;
    double step = 0.0;
    int last = 0;
    for (int next; (next = nearest_unvisited(state, last, visited, step)) >= 0; last = next) {
        visited.insert(next);
        length += step;
    }
    return closed != 0 ? length + state.distance(last, 0) : length;
}

}  // namespace

nmkAnnealStateTester::nmkAnnealStateTester() = default;

nmkAnnealStateTester::~nmkAnnealStateTester() = default;

void nmkAnnealStateTester::start_tests(std::ostream& out) {
    out << "Number of points\tRun\tInitial length\tNearest neighbour\tFinal length\tIterations\t"
           "Time\n";
}

void nmkAnnealStateTester::test(nmkAnnealOrderState& state, nmkAnnealOrderState& best, int runs,
                                int closed, std::ostream& out) {
    const double nearest_neighbour = nearest_neighbour_length(state, closed);
    for (int r = 0; r < runs; ++r) {
        const double started = apHighResTime::time();
        state.initialise();
        const double initial = state.length();
        nmkAnneal anneal(state, best);
        anneal.seed(r + first_seed);
        anneal.simulate();
        const double elapsed = apHighResTime::time() - started;
        static_cast<nmkAnnealState&>(state) = best;
        const double final_length = state.length();
        out << state.num_items() << '\t' << r << '\t' << initial << '\t' << nearest_neighbour
            << '\t' << final_length << '\t' << anneal.num_iterations_used() << '\t' << elapsed
            << '\n';
        if (nearest_neighbour < final_length) {
            ut_assert_failed("Simulated annealing worse than nearest neighbour.", __FILE__,
                             __LINE__, "nmkAnnealStateTester::test");
        }
    }
}
