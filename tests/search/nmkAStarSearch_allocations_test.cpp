// What a search allocates: on a lattice of the library's own, a node for each call of the verifier
// and next to nothing else.
#include <gtest/gtest.h>
#include <nmktoolbox/search.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace {

std::atomic<int> allocations{0};

}  // namespace

// Not inlined: the compiler would warn that malloc and delete do not match.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* block = std::malloc(size)) return block;
    throw std::bad_alloc();
}

// Without this one a sanitizer would use its own, whose blocks must not be given to std::free.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size);
}

[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace {

using NodePointer = std::shared_ptr<const nmkSearchNode>;

class CountingVerifier : public nmk2dSearchNodeVerifier {
  public:
    explicit CountingVerifier(double side)
        : nmk2dSearchNodeVerifier(giBox2(giPoint2(0, 0), giPoint2(side, side))) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        ++asked;
        return nmk2dSearchNodeVerifier::verify(parent, node);
    }

    mutable int asked = 0;
};

// The library cannot know what it does, so it takes the general lists.
class OwnGenerator : public nmk2dSearchNodeGenerator {
  public:
    using nmk2dSearchNodeGenerator::nmk2dSearchNodeGenerator;
};

struct Made {
    int questions;
    int allocations;
};

template <class Generator>
Made made_by_a_search(double side, giPoint2 goal) {
    const auto verifier = std::make_shared<CountingVerifier>(side);
    nmkAStarSearch search(std::make_shared<Generator>(1, 1), verifier,
                          std::make_shared<nmk2dSearchNode>(giPoint2(0, 0)),
                          std::make_shared<nmk2dSearchGoalPoint>(goal));
    std::vector<NodePointer> route;
    const int before = allocations;
    search.perform(coiFiller_from_container(route));
    return {verifier->asked, allocations - before};
}

TEST(nmkAStarSearch, on_a_lattice_makes_nodes_for_the_verifier_only) {
    constexpr int growing_of_lists = 200;
    for (const giPoint2& goal : {giPoint2(59, 31), giPoint2(0.5, 0.5)}) {
        const Made made = made_by_a_search<nmk2dSearchNodeGenerator>(60, goal);
        EXPECT_GT(made.questions, 50);
        EXPECT_LE(made.allocations, made.questions + growing_of_lists);
        const Made own = made_by_a_search<OwnGenerator>(60, goal);
        EXPECT_EQ(own.questions, made.questions);
        EXPECT_GT(own.allocations, 3 * made.questions);
    }
}

}  // namespace
