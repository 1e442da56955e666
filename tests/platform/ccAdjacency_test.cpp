#include <digiutils/ccAdjacency.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "model_samples.h"
#include "platform/plain_adjacency.h"

using model_samples::Corners;

namespace {

constexpr double usual_angle = 20.0;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

std::vector<giLink> links_of(const giTriBlock& block, int by_index, double tolerance,
                             double angle = usual_angle) {
    giTriBlock target;
    ccAdjacency adjacency(block, target, by_index, 1, angle);
    EXPECT_EQ(adjacency.create_adjacency(tolerance), nmADJ_OK);
    giLinkArrcoFeature links;
    if (target.get(links) == 0) return {};
    return {links->begin(), links->end()};
}

int free_edges(const std::vector<giLink>& links) {
    int count = 0;
    for (const giLink& link : links) {
        for (int k = 0; k < 3; ++k) count += link[k] < 0 ? 1 : 0;
    }
    return count;
}

// Whether a neighbour's neighbour is the triangle itself.
bool are_mutual(const std::vector<giLink>& links) {
    for (std::size_t i = 0; i < links.size(); ++i) {
        for (int k = 0; k < 3; ++k) {
            if (links[i][k] < 0) continue;
            const giLink& other = links[static_cast<std::size_t>(links[i][k])];
            const int self = static_cast<int>(i);
            if (other[0] != self && other[1] != self && other[2] != self) return false;
        }
    }
    return true;
}

// Triangles about the edge from (0,0,0) to (0,0,1), with their third node at these angles of 90
// degrees; the negative ones run along the edge downwards.
giTriBlock& leaves(giTriBlock& block, const std::vector<int>& quarter_turns) {
    const double x[] = {1, 0, -1, 0};
    const double y[] = {0, 1, 0, -1};
    for (const int turn : quarter_turns) {
        const auto at = static_cast<std::size_t>(turn < 0 ? -turn - 1 : turn);
        const double low = turn < 0 ? 1 : 0;
        model_samples::fill_unshared(block, {{0, 0, low, 0, 0, 1 - low, x[at], y[at], 0}});
    }
    return block;
}

}  // namespace

TEST(ccAdjacency, a_closed_shell_has_no_free_edge) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    const auto links = links_of(block, 0, 1e-5);
    EXPECT_EQ(free_edges(links), 0);
    EXPECT_TRUE(are_mutual(links));
    EXPECT_EQ(links[0], giLink(2, 3, 1));
}

TEST(ccAdjacency, by_index_corners_at_one_place_are_not_shared) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    EXPECT_EQ(free_edges(links_of(block, 1, 1e-5)), 12);
}

TEST(ccAdjacency, corners_match_within_the_tolerance_and_not_past_it) {
    giTriBlock block;
    model_samples::fill_unshared(
        block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {1, 9e-6, 0, 0, -9e-6, 0, 0, -1, 0}});
    EXPECT_EQ(free_edges(links_of(block, 0, 1e-5)), 4);
    EXPECT_EQ(free_edges(links_of(block, 0, 8e-6)), 6);
    EXPECT_EQ(free_edges(links_of(block, 0, 0.0)), 6);
    EXPECT_EQ(free_edges(links_of(block, 0, -1.0)), 6);
    EXPECT_EQ(free_edges(links_of(block, 0, not_a_number)), 6);
}

TEST(ccAdjacency, places_and_links_are_those_of_the_plain_way) {
    std::mt19937 random(4);
    for (int round = 0; round < 60; ++round) {
        auto triangles = model_samples::grid(4);
        std::shuffle(triangles.begin(), triangles.end(), random);
        triangles.resize(triangles.size() - random() % 8);
        const double scale = round % 2 == 0 ? 1.0 : 1e-3;
        for (Corners& corners : triangles) {
            for (double& value : corners) {
                // Off the grid by less or more than the tolerance.
                value = scale * (value + 1e-4 * static_cast<double>(random() % 5) - 3.0);
            }
        }
        giTriBlock block;
        model_samples::fill_unshared(block, triangles);
        const double tolerance = scale * 3e-4;
        const auto ids = plain::places(model_samples::nodes_of(block), false, tolerance);
        const auto expected = plain::links(model_samples::triangles_of(block), ids);
        ASSERT_EQ(links_of(block, 0, tolerance), expected) << "round " << round;
    }
}

TEST(ccAdjacency, the_angle_never_frees_an_edge_that_two_triangles_share) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    for (const double angle : {0.0, -5.0, 180.0, not_a_number}) {
        EXPECT_EQ(free_edges(links_of(block, 0, 1e-5, angle)), 0) << angle;
    }
}

TEST(ccAdjacency, triangles_wound_alike_along_an_edge_are_not_neighbours) {
    giTriBlock block;
    leaves(block, {0, 2});
    EXPECT_EQ(free_edges(links_of(block, 0, 1e-5)), 6);
}

TEST(ccAdjacency, where_four_meet_planes_that_continue_are_paired_first) {
    giTriBlock block;
    leaves(block, {0, 1, -3, -4});
    const auto links = links_of(block, 0, 1e-5);
    EXPECT_EQ(links[0][0], 2);
    EXPECT_EQ(links[1][0], 3);
    EXPECT_TRUE(are_mutual(links));
}

TEST(ccAdjacency, where_two_solids_meet_in_an_edge_each_keeps_its_own_faces) {
    giTriBlock block;
    leaves(block, {-1, 1, -3, 3});
    const auto links = links_of(block, 0, 1e-5);
    EXPECT_EQ(links[0][0], 1);
    EXPECT_EQ(links[2][0], 3);
    EXPECT_TRUE(are_mutual(links));
}

TEST(ccAdjacency, the_solid_across_the_full_turn_keeps_its_faces) {
    giTriBlock block;
    leaves(block, {0, -2, 2, -4});
    const auto links = links_of(block, 0, 1e-5);
    EXPECT_EQ(links[0][0], 3);
    EXPECT_EQ(links[1][0], 2);
}

TEST(ccAdjacency, one_of_three_is_left_over) {
    giTriBlock block;
    leaves(block, {0, 1, -3});
    const auto links = links_of(block, 0, 1e-5);
    EXPECT_EQ(free_edges(links), 7);
    EXPECT_EQ(links[0][0], 2);
    EXPECT_EQ(links[1][0], -1);
}

TEST(ccAdjacency, an_edge_within_one_place_is_not_free) {
    giTriBlock block;
    model_samples::fill_unshared(block, {{0, 0, 0, 0, 0, 0, 0, 1, 0}});
    EXPECT_EQ(links_of(block, 0, 1e-5)[0][0], 0);
}

TEST(ccAdjacency, indices_outside_the_block_have_no_neighbour) {
    giTriBlock block;
    model_samples::add_node(block, {0, 0, 0});
    model_samples::add_triangle(block, {0, 1, -1});
    model_samples::add_triangle(block, {1, 0, INT_MAX});
    model_samples::add_triangle(block, {INT_MIN, 0, 7});
    EXPECT_EQ(free_edges(links_of(block, 1, 1e-5)), 9);
    EXPECT_EQ(free_edges(links_of(block, 0, 1e-5)), 9);
}

TEST(ccAdjacency, nan_never_matches_and_infinities_match_where_they_are_equal) {
    giTriBlock block;
    model_samples::fill_unshared(block, {{not_a_number, 0, 0, 1, 0, 0, 2, 0, 0},
                                         {1, 0, 0, not_a_number, 0, 0, 3, 0, 0},
                                         {infinity, 0, 0, 5, 0, 0, 6, 0, 0},
                                         {5, 0, 0, infinity, 0, 0, 7, 0, 0}});
    const auto links = links_of(block, 0, 1e-5);
    EXPECT_EQ(links[0][0], -1);
    EXPECT_EQ(links[2][0], 3);
}

TEST(ccAdjacency, takes_any_tolerance_and_any_size_of_coordinates) {
    giTriBlock block;
    model_samples::fill_unshared(
        block, {{1e300, 0, 0, 1, 0, 0, 2, 0, 0}, {1, 0, 0, 1e300, 0, 0, 3, 1e-300, 0}});
    for (const double tolerance : {5e-324, 1e-5, 1.0 / 3.0}) {
        EXPECT_EQ(links_of(block, 0, tolerance)[0][0], 1) << tolerance;
    }
    EXPECT_EQ(free_edges(links_of(block, 0, infinity)), 0);
}

TEST(ccAdjacency, a_source_without_triangles_leaves_the_target) {
    giTriBlock empty;
    giTriBlock target;
    EXPECT_EQ(ccAdjacency(empty, target, 0, 1, usual_angle).create_adjacency(1e-5),
              nmADJ_NO_TRIANGLES);
    EXPECT_EQ(target.size(), 0);
}

TEST(ccAdjacency, without_replacing_links_that_are_there_stay) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    giLinkArrcoFeature links;
    block.add(links);
    links->add({7, 8, 9});
    EXPECT_EQ(ccAdjacency(block, block, 0, 0, usual_angle).create_adjacency(1e-5), nmADJ_OK);
    EXPECT_EQ(links->size(), 1);
    EXPECT_EQ(ccAdjacency(block, block, 0, 1, usual_angle).create_adjacency(1e-5), nmADJ_OK);
    ASSERT_EQ(block.get(links), 1);
    EXPECT_EQ(links->size(), 4);
}

TEST(ccAdjacency, many_triangles_about_one_edge_are_paired_in_time) {
    giTriBlock block;
    giNodeXYZ nodes;
    block.add(nodes);
    nodes->add({0, 0, 0});
    nodes->add({0, 0, 1});
    constexpr int count = 200000;
    for (int i = 0; i < count; ++i) nodes->add({1.0 + i, static_cast<double>(i % 7), 0});
    for (int i = 0; i < count; ++i) {
        model_samples::add_triangle(block, {i % 2, 1 - i % 2, i + 2});
    }
    const auto links = links_of(block, 1, 1e-5);
    EXPECT_EQ(free_edges(links), 2 * count);
}
