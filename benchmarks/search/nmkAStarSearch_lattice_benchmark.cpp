// Benchmark: free lattices of which every place is closed, 1e4 to 1e6 of them: time and memory for
// a closed node, and at 1e4 a generator of a caller's own class and the plain lists.
//
// The goal lies off the lattice, so the search closes the whole square; another run goes from a
// corner to a place that it reaches, which leaves many records open. Memory is what the blocks take
// that are held at once at most, what the allocator adds to them included.
#include <malloc.h>
#include <nmktoolbox/search.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "search/plain_search.h"
#include "stopwatch.h"

namespace {

std::size_t held = 0;
std::size_t most_held = 0;

std::size_t size_of(void* block) { return malloc_usable_size(block) + sizeof(std::size_t); }

}  // namespace

// Not inlined: the compiler would take malloc and delete for a pair that does not match.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    held += size_of(block);
    if (held > most_held) most_held = held;
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    if (block != nullptr) held -= size_of(block);
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace {

using NodePointer = std::shared_ptr<const nmkSearchNode>;

// Accepts a square, and counts what it accepts.
class Square : public nmk2dSearchNodeVerifier {
  public:
    explicit Square(int side)
        : nmk2dSearchNodeVerifier(giBox2(giPoint2(0, 0), giPoint2(side - 1, side - 1))) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        const auto verdict = nmk2dSearchNodeVerifier::verify(parent, node);
        if (verdict == nmkSearchNodeVerifierResult::accepted) ++closed;
        return verdict;
    }

    mutable int closed = 0;
};

// Nothing is known of what it does, so its search makes a node and a record for every neighbour.
class OwnGenerator : public nmk2dSearchNodeGenerator {
  public:
    using nmk2dSearchNodeGenerator::nmk2dSearchNodeGenerator;
};

struct Run {
    double seconds;
    double bytes;  // for a closed node
    int closed;
    std::size_t nodes;  // of the route
};

template <class Search, class Generator = nmk2dSearchNodeGenerator>
Run run(int side, giPoint2 target) {
    const auto verifier = std::make_shared<Square>(side);
    Run result{};
    std::vector<NodePointer> route;
    const std::size_t before = held;
    most_held = held;
    result.seconds = stopwatch::seconds([&] {
        Search search(std::make_shared<Generator>(1, 1), verifier,
                      std::make_shared<nmk2dSearchNode>(giPoint2(0, 0)),
                      std::make_shared<nmk2dSearchGoalPoint>(target));
        search.perform(coiFiller_from_container(route));
    });
    result.closed = verifier->closed;
    result.bytes = static_cast<double>(most_held - before) / result.closed;
    result.nodes = route.size();
    return result;
}

// The least time of several runs over the whole square.
template <class Generator = nmk2dSearchNodeGenerator>
Run whole_square(int side, int runs) {
    const giPoint2 off(side + 0.5, side + 0.5);
    Run best = run<nmkAStarSearch, Generator>(side, off);
    for (int i = 1; i < stopwatch::rounds(runs); ++i) {
        const Run next = run<nmkAStarSearch, Generator>(side, off);
        if (next.seconds < best.seconds) best = next;
    }
    return best;
}

constexpr double lattice_bytes = 160.0;
constexpr double own_bytes = 250.0;

bool report_memory(const std::string& name, const Run& run, double target) {
    const bool reached = stopwatch::within(run.bytes, target);
    std::printf("%-44s %8d closed %9.1f bytes a node, at most %.0f%s\n", name.c_str(), run.closed,
                run.bytes, target, reached ? "" : "  MISSED");
    return reached;
}

bool measure_growth() {
    const Run small = whole_square(100, 20);
    bool reached = report_memory("whole square of 1e4", small, lattice_bytes);
    if (stopwatch::is_small()) return reached && small.closed == 10000;
    for (const int side : {316, 1000}) {
        const Run large = whole_square(side, 3);
        const std::string name =
            std::to_string(side * side) + " nodes closed, a million, beside 1e4";
        const bool all = large.closed == side * side && large.nodes == 0;
        reached &= stopwatch::report(name.c_str(), 1e6 * large.seconds / large.closed,
                                     1e6 * small.seconds / small.closed, 1.6, all);
        reached &=
            report_memory("whole square of " + std::to_string(side * side), large, lattice_bytes);
    }
    const Run reaching = run<nmkAStarSearch>(1200, giPoint2(1199, 600));
    return report_memory("to a cell that is reached", reaching, lattice_bytes) && reached;
}

bool measure_own_generator() {
    const Run ours = whole_square(100, 20);
    const Run own = whole_square<OwnGenerator>(100, 20);
    stopwatch::print("1e4 nodes closed, a caller's own generator, beside ours", own.seconds,
                     ours.seconds);
    return report_memory("the same, a caller's own generator", own, own_bytes) &&
           own.closed == ours.closed;
}

bool measure_plain() {
    const int side = stopwatch::size(100, 20);
    const giPoint2 off(side + 0.5, side + 0.5);
    const Run plain_lists = run<nmk_search::plain::Search>(side, off);
    const Run ours = whole_square(side, 5);
    return stopwatch::report("1e4 nodes closed, beside the plain lists", ours.seconds,
                             plain_lists.seconds, 0.003, ours.closed == plain_lists.closed);
}

}  // namespace

int main() {
    bool reached = measure_growth();
    reached &= measure_own_generator();
    reached &= measure_plain();
    return reached ? 0 : 1;
}
