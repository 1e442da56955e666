// anneal_memory_benchmark.cpp: the memory that annealing 100,000 points takes, all in.
//
// Counted are the bytes asked of operator new that are held at once: for the pair the points, both
// states and what the annealer itself sets up; for the sorter the items, handles and lists too.
// The schedule is broken off after its first step; all arrays stand by then, and the rest of it
// would take hours.
//
// One line each: name, bytes an item, bytes an item to reach; there is no figure to reach for the
// whole sorter, since items are a caller's own.

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

std::size_t held = 0;
std::size_t most_held = 0;

// The size of a block stands in front of it.
constexpr std::size_t size_room = alignof(std::max_align_t);

struct Broken_off {};

struct Break_off : nmkProgressBreak {
    int increment() override { throw Broken_off(); }
};

}  // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size + size_room);
    if (block == nullptr) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    held += size;
    if (held > most_held) most_held = held;
    return static_cast<char*>(block) + size_room;
}

void operator delete(void* pointer) noexcept {
    if (pointer == nullptr) return;
    void* block = static_cast<char*>(pointer) - size_room;
    held -= *static_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }

// A hole: its point, beside what every sort item has.
class Hole : public nmkSortItemWithPoint {
  public:
    explicit Hole(const giPoint3& place) : point(place) {}
    const giPoint3& get_point() const override { return point; }

  private:
    giPoint3 point;
};

namespace {

constexpr int items = 100000;

void report(const char* name, std::size_t bytes, const char* to_reach) {
    std::printf("%-28s %9.1f %9s\n", name, static_cast<double>(bytes) / items, to_reach);
}

// The pair of states on the points that they borrow.
void measure_pair(const std::vector<plain::Point>& spread) {
    const std::size_t before = held;
    const giPoint3coPageArr points = plain::paged(spread);
    most_held = held;
    nmkAnnealStatePoints state(&points), best(&points);
    nmkAnneal anneal(state, best);
    Break_off progress;
    anneal.set_progress(&progress);
    try {
        anneal.simulate();
    } catch (const Broken_off&) {
        report("points_pair_100000", most_held - before, "200.0");
    }
}

// The whole road: items of a caller, their handles and lists, and the pair within the sorter.
void measure_sorter(const std::vector<plain::Point>& spread) {
    const std::size_t before = held;
    most_held = held;
    nmkPointSorter sorter(nmkSortTypeShortest);
    for (const plain::Point& p : spread) {
        sorter.add_item(nmkSortItemPrf(nmk_ptr_claim, new Hole(giPoint3(p.x, p.y, p.z))));
    }
    Break_off progress;
    try {
        sorter.sort(0.01, giPoint3(0, 0, 0), &progress);
    } catch (const Broken_off&) {
        report("points_sorter_100000", most_held - before, "-");
    }
}

}  // namespace

int main() {
    const auto spread = plain::spread_points(plain::Spread::space, items, 1);
    measure_pair(spread);
    measure_sorter(spread);
}
