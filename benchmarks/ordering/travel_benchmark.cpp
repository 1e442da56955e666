// Benchmark: the travel that nmkTravelOrder finds, beside the best lengths that are known and
// beside a bare 2-opt in the same time of the processor.
//
// In the rows of instances both columns are lengths, each leg rounded to a whole number as their
// known lengths are. The order itself is made for the exact lengths. Rows of seconds have those to
// reach beside those taken, for one core of a machine that does nothing else; the effort is a count
// of steps, so the lengths are the same on every machine, busy or not. Random points come from a
// generator of the program's own.
#include <nmktoolbox/ordering.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "ordering/bare_assignment.h"
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
    {"pcb1173", false, 56556, 1.0, 0.004},  {"E1000", true, 23113422, 1.0, 0.005},
    {"E10000", true, 71862515, 10.0, 0.015}};

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

// The column of the peer has the seconds to reach.
bool report_seconds(const std::string& name, double seconds, double to_reach) {
    return stopwatch::report((name + ", seconds of the processor").c_str(), seconds, to_reach, 1.0,
                             true);
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
    reached &= report_seconds(name, seconds, instance.seconds);
    std::printf("%s: %.3f %% above the best known; lower bound %.1f %% below\n", name.c_str(),
                100.0 * (length / instance.known - 1.0),
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
    reached &= report_seconds("100,000 random points", seconds, 60.0);
    const auto time_of = [&](int count) {
        nmkTravelOrder order(problem_of(Points(points.begin(), points.begin() + count), true));
        order.set_steps(equal_steps * count);
        return stopwatch::processor_seconds([&] { order.find(); });
    };
    const double growth = 10.0 * std::log(n) / std::log(n / 10);
    return reached & stopwatch::report("100,000 beside 10,000, 3 steps an item", time_of(n),
                                       time_of(n / 10), growth, true);
}

enum class Lines { reversible, one_way };
enum class Ends { anywhere, near_starts };

struct LineSet {
    const char* name;
    Lines lines;
    Ends ends;
};

constexpr LineSet line_sets[] = {{"1,000 reversible lines", Lines::reversible, Ends::anywhere},
                                 {"1,000 one-way lines", Lines::one_way, Ends::anywhere},
                                 {"1,000 short one-way lines", Lines::one_way, Ends::near_starts}};

struct LinePoints {
    std::vector<plain::Point> starts;
    std::vector<plain::Point> ends;
};

Points placed(const std::vector<plain::Point>& points) {
    Points result;
    for (const plain::Point& point : points) result.emplace_back(point.x, point.y, point.z);
    return result;
}

// The annealer measures one-way lines in the plan view, so that they are flat. Short lines are
// about as long as the gaps between neighbours.
LinePoints points_of(const LineSet& set) {
    constexpr double side = 100.0, length_of_short_lines = 4.0;
    const int n = stopwatch::size(1000, 60);
    LinePoints points{plain::spread_points(plain::Spread::space, n, 1),
                      plain::spread_points(plain::Spread::space, n, 2)};
    for (std::size_t i = 0; i < points.starts.size(); ++i) {
        plain::Point& start = points.starts[i];
        plain::Point& end = points.ends[i];
        if (set.ends == Ends::near_starts) {
            const double share = length_of_short_lines / side;
            end = {start.x + share * (end.x - side / 2), start.y + share * (end.y - side / 2),
                   start.z + share * (end.z - side / 2)};
        }
        if (set.lines == Lines::one_way) start.z = end.z = 0.0;
    }
    return points;
}

nmkTravelProblem problem_of(const LineSet& set, const LinePoints& points) {
    const Points starts = placed(points.starts), ends = placed(points.ends);
    nmkTravelProblem problem;
    problem.end = nmkTravelEnd::at_start();  // the annealer's tours of reversible lines are closed
    for (std::size_t i = 0; i < starts.size(); ++i) {
        problem.items.push_back(set.lines == Lines::one_way
                                    ? nmkTravelItem::one_way_line(starts[i], ends[i])
                                    : nmkTravelItem::line(starts[i], ends[i]));
    }
    return problem;
}

template <class State>
double annealed_length(State& state, State& best) {
    nmkAnneal engine(state, best);
    engine.seed(1);
    engine.simulate();
    return plain::Inside::length_of(best);
}

double annealed_length(const LineSet& set, const LinePoints& points) {
    const giPoint3coPageArr from = plain::paged(points.starts);
    const giPoint3coPageArr to = plain::paged(points.ends);
    if (set.lines == Lines::one_way) {
        nmkAnnealStateNonReversible state(from, to, 1), best(from, to, 1);
        return annealed_length(state, best);
    }
    nmkAnnealStateReversibleLines state(from, to), best(from, to);
    return annealed_length(state, best);
}

// Where even the shortest assignment of ends to starts, than which no order of one-way lines is
// shorter, is above the target, the order is judged beside that.
bool report_length(const LineSet& set, const LinePoints& points, double length, double annealed) {
    constexpr double target = 0.92, target_of_assignment = 1.005;
    const std::string name = set.name;
    const Points starts = placed(points.starts), ends = placed(points.ends);
    const double bound =
        set.lines == Lines::one_way ? bare::Assignment(starts, ends).length() : 0.0;
    if (bound <= target * annealed) {
        return stopwatch::report((name + ", beside the annealer").c_str(), length, annealed, target,
                                 true);
    }
    stopwatch::print((name + ", beside the annealer").c_str(), length, annealed);
    std::printf("%s: no order is below %.4f of the annealer's travel\n", name.c_str(),
                bound / annealed);
    return stopwatch::report((name + ", beside the shortest assignment").c_str(), length, bound,
                             target_of_assignment, true);
}

// 1,000 lines beside the annealer, in length and in time.
bool measure(const LineSet& set) {
    const LinePoints points = points_of(set);
    const nmkTravelProblem problem = problem_of(set, points);
    nmkTravelResult result;
    const double seconds =
        stopwatch::processor_seconds([&] { result = nmkTravelOrder(problem).find(); });
    double annealed = 0.0;
    const double peer_seconds =
        stopwatch::processor_seconds([&] { annealed = annealed_length(set, points); });
    const bool is_short = report_length(set, points, result.length, annealed);
    return stopwatch::report((std::string(set.name) + ", time beside the annealer").c_str(),
                             seconds, peer_seconds, 0.1, true) &&
           is_short;
}

}  // namespace

int main() {
    bool reached = true;
    for (const Instance& instance : instances) {
        if (stopwatch::is_small() && instance.seconds > 0.5) continue;
        reached &= measure(instance);
    }
    reached &= measure_many();
    for (const LineSet& set : line_sets) reached &= measure(set);
    return reached ? 0 : 1;
}
