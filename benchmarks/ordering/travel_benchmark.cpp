// Benchmark: the travel that nmkTravelOrder finds, beside the best lengths that are known and
// beside a bare 2-opt in the same time of the processor.
//
// In the rows of instances both columns are lengths, each leg rounded to a whole number as their
// known lengths are. The order itself is made for the exact lengths. Below each pair of rows are
// the seconds of the processor; the effort is a count of steps, so the lengths are the same on
// every machine, busy or not. Random points come from a generator of the program's own.
#include <nmktoolbox/ordering.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "ordering/bare_two_opt.h"
#include "ordering/plain_problems.h"
#include "stopwatch.h"

namespace {

std::size_t held = 0;
std::size_t most_held = 0;
constexpr std::size_t size_room =
    alignof(std::max_align_t);  // the size of a block is in front of it

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* block = std::malloc(size + size_room);
    if (block == nullptr) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    held += size;
    most_held = std::max(most_held, held);
    return static_cast<char*>(block) + size_room;
}

[[gnu::noinline]] void operator delete(void* pointer) noexcept {
    if (pointer == nullptr) return;
    void* block = static_cast<char*>(pointer) - size_room;
    held -= *static_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }

namespace {

using Points = std::vector<giPoint3>;

// The length of a shortest ring through n random points in a square, Johnson and McGeoch 1996.
double random_length(double n, double side) {
    return 0.7124 * std::sqrt(n) * side * (1.0 + 0.33 / n);
}

struct Instance {
    const char* name;
    bool is_closed;
    double known;    // length; for E1000 and E10000 the best of our own runs so far
    double seconds;  // to reach, with one core of a machine that does nothing else
    double above;    // at most, as a part of the known length
};

constexpr Instance instances[] = {
    {"kroA100", true, 21282, 0.2, 0.0},     {"d198", true, 15780, 0.3, 0.001},
    {"pcb442", true, 50778, 0.5, 0.002},    {"d493", true, 35002, 0.5, 0.003},
    {"pcb1173", true, 56892, 1.0, 0.004},   {"fl1577", true, 22249, 1.5, 0.008},
    {"kroA100", false, 20405, 0.2, 0.0},    {"d198", false, 12753, 0.3, 0.001},
    {"pcb442", false, 50082, 0.5, 0.002},   {"d493", false, 32822, 0.5, 0.003},
    {"pcb1173", false, 56556, 1.0, 0.004},  {"E1000", true, 23125170, 1.0, 0.005},
    {"E10000", true, 71910010, 10.0, 0.015}};

Points read_instance(const std::string& name) {
    Points points;
    std::ifstream file(NMK_SHARED_DATA_DIR "/tsp/" + name + ".tsp");
    std::string line;
    while (std::getline(file, line) && line.find("NODE_COORD_SECTION") == std::string::npos) {
    }
    int number = 0;
    double x = 0.0, y = 0.0;
    while (file >> number >> x >> y) points.emplace_back(x, y, 0.0);
    return points;
}

nmkTravelProblem problem_of(const Points& points, bool is_closed) {
    nmkTravelProblem problem;
    problem.items.reserve(points.size());
    for (const giPoint3& point : points) problem.items.push_back(nmkTravelItem::point(point));
    if (is_closed) problem.end = nmkTravelEnd::at_start();
    return problem;
}

double rounded_length(const Points& points, const std::vector<int>& order, bool is_closed) {
    double sum = 0.0;
    for (std::size_t k = is_closed ? 0 : 1; k < order.size(); ++k) {
        const auto from = static_cast<std::size_t>(order[k == 0 ? order.size() - 1 : k - 1]);
        sum += std::floor(points[from].distance(points[static_cast<std::size_t>(order[k])]) + 0.5);
    }
    return sum;
}

bool measure(const Instance& instance) {
    const Points points = read_instance(instance.name);
    const std::string name =
        std::string(instance.name) + (instance.is_closed ? " closed" : " open");
    if (points.empty()) {
        std::printf("%s was not measured: its file is missing\n", name.c_str());
        return false;
    }
    const nmkTravelProblem problem = problem_of(points, instance.is_closed);
    nmkTravelResult result;
    const double seconds =
        stopwatch::processor_seconds([&] { result = nmkTravelOrder(problem).find(); });
    const double length = rounded_length(points, result.order, instance.is_closed);
    bool reached = stopwatch::report((name + ", beside the best known").c_str(), length,
                                     instance.known, 1.0 + instance.above, true);
    if (instance.is_closed) {
        const double peer = bare::TwoOpt(points).best_in(seconds);
        reached &= stopwatch::report((name + ", beside a bare 2-opt").c_str(), result.length, peer,
                                     1.0, true);
    }
    std::printf(
        "%s: %.3f %% above the best known in %.2f s of the processor, to reach %.1f; lower "
        "bound %.1f %% below\n",
        name.c_str(), 100.0 * (length / instance.known - 1.0), seconds, instance.seconds,
        100.0 * (1.0 - result.lower_bound / result.length));
    return reached;
}

Points random_points(int n) {
    std::mt19937 words(7);
    Points points;
    for (int i = 0; i < n; ++i) {
        const auto x = static_cast<double>(words() % 1000000);
        points.emplace_back(x, static_cast<double>(words() % 1000000), 0.0);
    }
    return points;
}

// Length, memory without the caller's own items, and time beside that of a tenth of the points.
bool measure_many() {
    const int n = stopwatch::size(100000, 2000);
    constexpr std::int64_t equal_steps = 3;  // of an item, for the two times
    const Points points = random_points(n);
    bool reached = true;
    double seconds = 0.0;
    {
        nmkTravelProblem problem = problem_of(points, true);
        const std::size_t before = held;
        most_held = held;
        const nmkTravelOrder order(std::move(problem));
        nmkTravelResult result;
        seconds = stopwatch::processor_seconds([&] { result = order.find(); });
        const double bytes = static_cast<double>(most_held - before) / n;
        reached &= stopwatch::report("100,000 random points, beside 0.7124 sqrt nA", result.length,
                                     random_length(n, 1e6), 1.06, true);
        reached &=
            stopwatch::report("100,000 random points, bytes a point", bytes, 250.0, 1.0, true);
        const double peer = bare::TwoOpt(points).best_in(0.0);
        reached &= stopwatch::report("100,000 random points, beside one bare 2-opt", result.length,
                                     peer, 1.0, true);
    }
    std::printf("100,000 random points: %.1f s of the processor, to reach 60\n", seconds);
    const auto time_of = [&](int count) {
        nmkTravelOrder order(problem_of(Points(points.begin(), points.begin() + count), true));
        order.set_steps(equal_steps * count);
        return stopwatch::processor_seconds([&] { order.find(); });
    };
    const double growth = 10.0 * std::log(n) / std::log(n / 10);
    return reached & stopwatch::report("100,000 beside 10,000, 3 steps an item", time_of(n),
                                       time_of(n / 10), growth, true);
}

// 1,000 lines beside the annealer, in length and in time.
bool measure_lines(bool is_one_way) {
    const int n = stopwatch::size(1000, 60);
    const auto starts = plain::spread_points(plain::Spread::space, n, 1);
    const auto ends = plain::spread_points(plain::Spread::space, n, 2);
    nmkTravelProblem problem;
    problem.end = nmkTravelEnd::at_start();  // the annealer's tours of reversible lines are closed
    for (std::size_t i = 0; i < starts.size(); ++i) {
        // The annealer measures one-way lines in the plan view.
        const giPoint3 from(starts[i].x, starts[i].y, is_one_way ? 0.0 : starts[i].z);
        const giPoint3 to(ends[i].x, ends[i].y, is_one_way ? 0.0 : ends[i].z);
        problem.items.push_back(is_one_way ? nmkTravelItem::one_way_line(from, to)
                                           : nmkTravelItem::line(from, to));
    }
    nmkTravelResult result;
    const double seconds =
        stopwatch::processor_seconds([&] { result = nmkTravelOrder(problem).find(); });
    const giPoint3coPageArr from = plain::paged(starts);
    const giPoint3coPageArr to = plain::paged(ends);
    double peer = 0.0;
    const auto anneal = [&](auto& state, auto& best) {
        nmkAnneal engine(state, best);
        engine.seed(1);
        engine.simulate();
        peer = plain::Inside::length_of(best);
    };
    const double peer_seconds = stopwatch::processor_seconds([&] {
        if (is_one_way) {
            nmkAnnealStateNonReversible state(from, to, 1), best(from, to, 1);
            anneal(state, best);
        } else {
            nmkAnnealStateReversibleLines state(from, to), best(from, to);
            anneal(state, best);
        }
    });
    const std::string name = is_one_way ? "1,000 one-way lines" : "1,000 reversible lines";
    const bool is_short = stopwatch::report((name + ", beside the annealer").c_str(), result.length,
                                            peer, 0.92, true);
    return is_short & stopwatch::report((name + ", time beside the annealer").c_str(), seconds,
                                        peer_seconds, 0.1, true);
}

}  // namespace

int main() {
    bool reached = true;
    for (const Instance& instance : instances) {
        if (stopwatch::is_small() && instance.seconds > 0.5) continue;
        reached &= measure(instance);
    }
    reached &= measure_many();
    reached &= measure_lines(false);
    reached &= measure_lines(true);
    return reached ? 0 : 1;
}
