#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkTriBoundary.h>

#include <cmath>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

#include "model_samples.h"

namespace {

using Edge = std::pair<giPoint3, giPoint3>;

// The edges that a visit stops after, and those that it has seen.
struct Collected {
    std::vector<Edge> edges;
    std::size_t stop_after = 1000000;
    int stop_value = 1;
};

int collect(const giPoint3& from, const giPoint3& to, void* data) {
    auto* const collected = static_cast<Collected*>(data);
    collected->edges.emplace_back(from, to);
    return collected->edges.size() >= collected->stop_after ? collected->stop_value : 0;
}

std::vector<Edge> edges_of(nmkTriBoundary& boundary) {
    Collected collected;
    EXPECT_EQ(boundary.visit(collect, &collected), 0);
    return collected.edges;
}

bool has_links(const giTriBlock& block) {
    giLinkArrcoFeature links;
    return block.get(links) != 0;
}

// Counts announcements of changes.
struct Listener {
    explicit Listener(coSender& sender) : receiver(1) {
        sender.call_list().add(new coCallFunc(&receiver, nmkTriBoundaryCR_mod, count, this, 1));
    }
    static void count(void* context, void* argument) {
        auto* const self = static_cast<Listener*>(context);
        ++self->calls;
        self->has_argument = self->has_argument || argument != nullptr;
    }

    coReceiver receiver;
    int calls = 0;
    bool has_argument = false;
};

// Two triangles that share nodes by index.
void fill_square(giTriBlock& block) {
    for (const giPoint3& node :
         {giPoint3(0, 0, 0), giPoint3(1, 0, 0), giPoint3(1, 1, 0), giPoint3(0, 1, 0)}) {
        model_samples::add_node(block, node);
    }
    model_samples::add_triangle(block, {0, 1, 2});
    model_samples::add_triangle(block, {0, 2, 3});
}

}  // namespace

TEST(nmkTriBoundary, a_closed_shell_has_no_free_edge) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    nmkTriBoundary boundary(&block);
    EXPECT_TRUE(edges_of(boundary).empty());
}

TEST(nmkTriBoundary, one_triangle_has_three_in_its_own_winding) {
    giTriBlock block;
    model_samples::fill_unshared(block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}});
    nmkTriBoundary boundary(&block);
    const giPoint3 a(0, 0, 0);
    const giPoint3 b(1, 0, 0);
    const giPoint3 c(0, 1, 0);
    EXPECT_EQ(edges_of(boundary), (std::vector<Edge>{{a, b}, {b, c}, {c, a}}));
}

TEST(nmkTriBoundary, edges_come_triangle_by_triangle) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary boundary(&block);
    const auto edges = edges_of(boundary);
    ASSERT_EQ(edges.size(), 4U);
    EXPECT_EQ(edges[0], Edge(giPoint3(0, 0, 0), giPoint3(1, 0, 0)));
    EXPECT_EQ(edges[1], Edge(giPoint3(1, 0, 0), giPoint3(1, 1, 0)));
    EXPECT_EQ(edges[2], Edge(giPoint3(1, 1, 0), giPoint3(0, 1, 0)));
    EXPECT_EQ(edges[3], Edge(giPoint3(0, 1, 0), giPoint3(0, 0, 0)));
}

TEST(nmkTriBoundary, a_visit_that_is_stopped_returns_1_and_not_the_callbacks_value) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary boundary(&block);
    Collected collected{{}, 2, -17};
    EXPECT_EQ(boundary.visit(collect, &collected), 1);
    EXPECT_EQ(collected.edges.size(), 2U);
}

TEST(nmkTriBoundary, a_null_block_or_one_without_triangles_is_visited_without_a_call) {
    nmkTriBoundary none(nullptr);
    EXPECT_TRUE(edges_of(none).empty());
    giTriBlock empty;
    nmkTriBoundary boundary(&empty);
    EXPECT_TRUE(edges_of(boundary).empty());
    model_samples::add_node(empty, {0, 0, 0});
    EXPECT_TRUE(edges_of(boundary).empty());
    EXPECT_FALSE(has_links(empty));
}

TEST(nmkTriBoundary, the_constructor_removes_links) {
    giTriBlock block;
    fill_square(block);
    giLinkArrcoFeature links;
    block.add(links);
    const nmkTriBoundary boundary(&block);
    EXPECT_FALSE(has_links(block));
}

TEST(nmkTriBoundary, links_are_kept_from_visit_to_visit) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary boundary(&block);
    edges_of(boundary);
    giLinkArrcoFeature links;
    ASSERT_EQ(block.get(links), 1);
    (*links)[0][0] = 1;
    EXPECT_EQ(edges_of(boundary).size(), 3U);
}

TEST(nmkTriBoundary, links_are_in_pages_for_all_triangles_of_the_source) {
    giLinkArr::set_page_size(16);
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::grid(20));
    nmkTriBoundary boundary(&block);
    edges_of(boundary);
    giLinkArrcoFeature links;
    ASSERT_EQ(block.get(links), 1);
    EXPECT_EQ(links->page_size(), 1024);
    giLinkArr::set_page_size(256);
}

TEST(nmkTriBoundary, a_shorter_array_of_links_is_grown_during_the_visit) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary boundary(&block);
    edges_of(boundary);
    giLinkArrcoFeature links;
    block.get(links);
    links->clear(1);
    EXPECT_EQ(edges_of(boundary).size(), 5U);
    EXPECT_EQ(links->size(), 2);
}

TEST(nmkTriBoundary, after_another_tolerance_or_angle_the_links_are_found_anew) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary boundary(&block);
    edges_of(boundary);
    boundary.set_tolerance(0.1);
    EXPECT_FALSE(has_links(block));
    EXPECT_EQ(edges_of(boundary).size(), 4U);
    EXPECT_TRUE(has_links(block));
    boundary.set_angle(30.0);
    EXPECT_FALSE(has_links(block));
    edges_of(boundary);
    boundary.delete_links();
    EXPECT_FALSE(has_links(block));
}

TEST(nmkTriBoundary, another_method_keeps_the_links) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    nmkTriBoundary boundary(&block);
    EXPECT_TRUE(edges_of(boundary).empty());
    boundary.set_boundary_method(nmkTriBoundaryByIndex);
    EXPECT_TRUE(has_links(block));
    EXPECT_TRUE(edges_of(boundary).empty());
    boundary.delete_links();
    EXPECT_EQ(edges_of(boundary).size(), 12U);
}

TEST(nmkTriBoundary, three_nodes_for_each_triangle_are_matched_by_place_and_others_by_index) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    model_samples::add_node(block, {9, 9, 9});
    nmkTriBoundary boundary(&block);
    EXPECT_EQ(edges_of(boundary).size(), 12U);
    boundary.set_boundary_method(nmkTriBoundaryByPlace);
    boundary.delete_links();
    EXPECT_TRUE(edges_of(boundary).empty());
    boundary.set_boundary_method(static_cast<nmkTriBoundaryMethod>(77));
    boundary.delete_links();
    EXPECT_TRUE(edges_of(boundary).empty());
}

TEST(nmkTriBoundary, corners_match_within_the_tolerance) {
    giTriBlock block;
    model_samples::fill_unshared(
        block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {1, 9e-6, 0, 0, -9e-6, 0, 0, -1, 0}});
    nmkTriBoundary boundary(&block);
    EXPECT_EQ(edges_of(boundary).size(), 4U);
    boundary.set_tolerance(1e-6);
    EXPECT_EQ(edges_of(boundary).size(), 6U);
}

TEST(nmkTriBoundary, corners_further_apart_than_1e_5_do_not_match_at_first) {
    giTriBlock block;
    model_samples::fill_unshared(
        block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {1, 1.1e-5, 0, 0, -1.1e-5, 0, 0, -1, 0}});
    nmkTriBoundary boundary(&block);
    EXPECT_EQ(edges_of(boundary).size(), 6U);
}

// Four triangles about one edge: the first and third continue each other but for a bend, and so do
// the second and fourth. Where the bend is more than the angle, the first and fourth are
// neighbours.
TEST(nmkTriBoundary, the_angle_chooses_the_neighbours_where_more_than_two_triangles_meet) {
    const auto across_from_first = [](double bend, std::optional<double> angle) {
        const double up = std::tan(bend * std::numbers::pi / 180.0);
        giTriBlock block;
        model_samples::fill_unshared(block, {{0, 0, 0, 0, 0, 1, 1, 0, 0},
                                             {0, 0, 0, 0, 0, 1, 0, 1, 0},
                                             {0, 0, 1, 0, 0, 0, -1, up, 0},
                                             {0, 0, 1, 0, 0, 0, up, -1, 0}});
        nmkTriBoundary boundary(&block);
        if (angle) boundary.set_angle(*angle);
        edges_of(boundary);
        giLinkArrcoFeature links;
        EXPECT_EQ(block.get(links), 1);
        return (*links)[0][0];
    };
    EXPECT_EQ(across_from_first(19.99, std::nullopt), 2);
    EXPECT_EQ(across_from_first(20.01, std::nullopt), 3);
    EXPECT_EQ(across_from_first(19.0, 18.0), 3);
    EXPECT_EQ(across_from_first(21.0, 22.0), 2);
}

TEST(nmkTriBoundary, a_block_without_nodes_or_a_null_target_is_visited_without_a_call) {
    giTriBlock block;
    model_samples::add_triangle(block, {0, 1, 2});
    nmkTriBoundary boundary(nullptr);
    EXPECT_EQ(boundary.set_triblock(&block, 1), 1);
    EXPECT_TRUE(edges_of(boundary).empty());
    giLinkArrcoFeature links;
    block.add(links);
    EXPECT_TRUE(edges_of(boundary).empty());
    fill_square(block);
    EXPECT_EQ(boundary.set_triblock(&block, nullptr, 1), 1);
    EXPECT_TRUE(edges_of(boundary).empty());
}

TEST(nmkTriBoundary, set_triblock_returns_whether_there_are_links) {
    giTriBlock block;
    fill_square(block);
    giTriBlock empty;
    giTriBlock target;
    nmkTriBoundary boundary(nullptr);
    EXPECT_EQ(boundary.set_triblock(&block, 0), 1);
    EXPECT_FALSE(has_links(block));
    EXPECT_EQ(boundary.set_triblock(&block, 1), 0);
    EXPECT_TRUE(has_links(block));
    EXPECT_EQ(boundary.set_triblock(nullptr, 1), 1);
    EXPECT_EQ(boundary.set_triblock(&block, nullptr, 1), 1);
    EXPECT_EQ(boundary.set_triblock(nullptr, &block, 1), 1);
    EXPECT_FALSE(has_links(block));
    EXPECT_EQ(boundary.set_triblock(&empty, 1), 1);
    EXPECT_EQ(boundary.set_triblock(&block, &target, 1), 0);
    EXPECT_TRUE(has_links(target));
    EXPECT_FALSE(has_links(block));
    EXPECT_EQ(edges_of(boundary).size(), 4U);
}

TEST(nmkTriBoundary, announces_before_and_after_links_are_found) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary boundary(nullptr);
    const Listener listener(boundary.sender());
    boundary.set_triblock(&block, 1);
    EXPECT_EQ(listener.calls, 2);
    boundary.set_triblock(&block, 0);
    EXPECT_EQ(listener.calls, 3);
    boundary.set_triblock(nullptr, 1);
    EXPECT_EQ(listener.calls, 4);
    EXPECT_FALSE(listener.has_argument);
}

TEST(nmkTriBoundary, takes_the_block_that_a_sender_announces) {
    giTriBlock block;
    fill_square(block);
    giLinkArrcoFeature links;
    block.add(links);
    coSender sender(10);
    const coCallReason reason;
    nmkTriBoundary boundary(nullptr);
    const Listener listener(boundary.sender());
    boundary.listen_enabled(&sender, reason);
    sender.announce(coCallReason(), &block);
    EXPECT_EQ(listener.calls, 0);
    sender.announce(reason, &block);
    EXPECT_EQ(listener.calls, 1);
    EXPECT_FALSE(has_links(block));
    EXPECT_EQ(edges_of(boundary).size(), 4U);
    sender.announce(reason, nullptr);
    EXPECT_TRUE(edges_of(boundary).empty());
}

TEST(nmkTriBoundary, may_end_before_the_sender_that_it_listens_to) {
    coSender sender(10);
    const coCallReason reason;
    {
        nmkTriBoundary boundary(nullptr);
        boundary.listen_enabled(&sender, reason);
        EXPECT_EQ(sender.call_list().size(), 1);
    }
    giTriBlock block;
    sender.announce(reason, &block);
    EXPECT_EQ(sender.call_list().size(), 0);
}

TEST(nmkTriBoundary, boundaries_that_listen_to_each_other_come_to_an_end) {
    giTriBlock block;
    fill_square(block);
    nmkTriBoundary first(nullptr);
    nmkTriBoundary second(nullptr);
    first.listen_enabled(&second.sender(), nmkTriBoundaryCR_mod);
    second.listen_enabled(&first.sender(), nmkTriBoundaryCR_mod);
    first.listen_enabled(&first.sender(), nmkTriBoundaryCR_mod);
    EXPECT_EQ(first.set_triblock(&block, 1), 0);
}

TEST(nmkTriBoundary, indices_outside_the_block_are_unset_points) {
    giTriBlock block;
    model_samples::add_node(block, {0, 0, 0});
    model_samples::add_triangle(block, {0, 5, -1});
    nmkTriBoundary boundary(&block);
    const auto edges = edges_of(boundary);
    ASSERT_EQ(edges.size(), 3U);
    EXPECT_FALSE(edges[1].first.is_set());
}
