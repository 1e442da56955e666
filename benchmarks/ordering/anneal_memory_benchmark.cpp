// anneal_memory_benchmark.cpp: the memory that annealing 100,000 points takes, all in.
//
// Counted are the bytes asked of operator new that are held at once, and what the C library's heap
// really lays aside for them: for the pair the points, both states and what the annealer itself
// sets up; for the sorter the items, handles and lists too. The schedule of 100,000 is broken off
// after its first step, as the rest of it would take hours; what is held later, and when the order
// is laid out, shows in a smaller sort that goes through to its end.
//
// One line each; ends with 1 when more is asked for than is to be reached.

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include "ordering/plain_problems.h"
#include "stopwatch.h"

namespace {

struct Bytes {
    std::size_t asked = 0;
    std::size_t of_heap = 0;
};

Bytes held;
Bytes most_held;

void count(std::size_t asked, std::size_t of_heap) {
    held = {held.asked + asked, held.of_heap + of_heap};
    most_held = {std::max(most_held.asked, held.asked), std::max(most_held.of_heap, held.of_heap)};
}

Bytes start_counting() { return most_held = held; }

// A block of the heap has its size in front of it, and is cut in steps of 16 bytes.
std::size_t heap_bytes(std::size_t asked) {
    const std::size_t block = (asked + sizeof(std::size_t) + 15) / 16 * 16;
    return std::max<std::size_t>(block, 32);
}

// The size of a block stands in front of it.
constexpr std::size_t size_room = alignof(std::max_align_t);

struct BrokenOff {};

struct BreakOff : nmkProgressBreak {
    int increment() override { throw BrokenOff(); }
};

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* block = std::malloc(size + size_room);
    if (block == nullptr) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    count(size, heap_bytes(size));
    return static_cast<char*>(block) + size_room;
}

[[gnu::noinline]] void operator delete(void* pointer) noexcept {
    if (pointer == nullptr) return;
    void* block = static_cast<char*>(pointer) - size_room;
    const std::size_t size = *static_cast<std::size_t*>(block);
    held = {held.asked - size, held.of_heap - heap_bytes(size)};
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }

// A hole, with nothing of its own: its place is the point that every item with a point has.
class Hole : public nmkSortItemWithPoint {
  public:
    explicit Hole(const giPoint3& place) { point = place; }
    const giPoint3& get_point() const override { return point; }
};

namespace {

const int many = stopwatch::size(100000, 2000);
const int few = stopwatch::size(2000, 100);

// Asked of operator new.
constexpr double pair_target = 90.0;
constexpr double sorter_target = 200.0;

bool report(const char* name, int items, const Bytes& before, double target) {
    const auto an_item = [items](std::size_t bytes) { return static_cast<double>(bytes) / items; };
    const double asked = an_item(most_held.asked - before.asked);
    const bool reached = stopwatch::within(asked, target);
    std::printf("%-28s %.1f bytes an item asked, %.1f of the heap, at most %.0f asked%s\n", name,
                asked, an_item(most_held.of_heap - before.of_heap), target,
                reached ? "" : "  MISSED");
    return reached;
}

// The pair of states on the points that they borrow.
bool measure_pair() {
    const auto spread = plain::spread_points(plain::Spread::space, many, 1);
    const Bytes before = start_counting();
    const giPoint3coPageArr points = plain::paged(spread);
    nmkAnnealStatePoints state(&points), best(&points);
    nmkAnneal anneal(state, best);
    BreakOff progress;
    anneal.set_progress(&progress);
    try {
        anneal.simulate();
    } catch (const BrokenOff&) {
    }
    return report("points_pair_100000", many, before, pair_target);
}

// The whole road: items of a caller, their handles and lists, and the pair within the sorter.
bool measure_sorter(const char* name, int items, nmkProgressBreak* progress) {
    const auto spread = plain::spread_points(plain::Spread::space, items, 1);
    const Bytes before = start_counting();
    nmkPointSorter sorter(nmkSortTypeShortest);
    for (const plain::Point& p : spread) {
        sorter.add_item(nmkSortItemPrf(nmk_ptr_claim, new Hole(giPoint3(p.x, p.y, p.z))));
    }
    try {
        sorter.sort(0.01, giPoint3(0, 0, 0), progress);
    } catch (const BrokenOff&) {
    }
    return report(name, items, before, sorter_target);
}

}  // namespace

int main() {
    BreakOff progress;
    bool reached = measure_pair();
    reached &= measure_sorter("points_sorter_100000", many, &progress);
    reached &= measure_sorter("points_sorter_2000_to_end", few, nullptr);
    return reached ? 0 : 1;
}
