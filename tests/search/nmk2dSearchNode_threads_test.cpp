// Nodes and searches across threads: a node that one thread made may be freed by another.
#include <gtest/gtest.h>
#include <nmktoolbox/search.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

using NodePointer = std::shared_ptr<const nmkSearchNode>;

constexpr int side = 40;
constexpr int half_side = 20;

std::vector<NodePointer> route_across() {
    std::vector<NodePointer> route;
    const giBox2 box(giPoint2(0, 0), giPoint2(side, side));
    nmkAStarSearch search(std::make_shared<nmk2dSearchNodeGenerator>(1, 1),
                          std::make_shared<nmk2dSearchNodeVerifier>(box),
                          std::make_shared<nmk2dSearchNode>(giPoint2(0, 0)),
                          std::make_shared<nmk2dSearchGoalPoint>(giPoint2(side, half_side)));
    search.perform(coiFiller_from_container(route));
    return route;
}

// Outlives the variables of every thread, the first one's too.
std::vector<NodePointer>& kept_to_the_end() {
    static std::vector<NodePointer> route;
    return route;
}

}  // namespace

TEST(nmk2dSearchNode, may_be_freed_by_another_thread_than_that_which_made_it) {
    std::vector<NodePointer> route;
    std::thread([&] { route = route_across(); }).join();
    ASSERT_EQ(route.size(), side + 1u);
    std::thread([&] { route.clear(); }).join();
    EXPECT_TRUE(route.empty());
    EXPECT_EQ(route_across().size(), side + 1u);
}

TEST(nmk2dSearchNode, may_be_freed_when_the_thread_that_frees_it_ends) {
    kept_to_the_end() = route_across();
    std::thread([] {
        thread_local std::vector<NodePointer> kept_by_thread;
        kept_by_thread = route_across();  // freed after the search's own variables of the thread
        EXPECT_EQ(kept_by_thread.size(), side + 1u);
    }).join();
    EXPECT_EQ(kept_to_the_end().size(), side + 1u);
}
