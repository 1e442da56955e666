#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>

#include <cmath>
#include <limits>
#include <random>

#include "trifile/plain_unduplicator.h"

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace

TEST(nmkNodeUnduplicator, keeps_the_index_that_was_proposed_first) {
    nmkNodeUnduplicator nodes;
    const giPoint3 p(1, 2, 3);
    const giPoint3 q(1, 2, 4);
    EXPECT_EQ(nodes.node_index(p, 5), 5);
    EXPECT_EQ(nodes.node_index(p, 9), 5);
    EXPECT_EQ(nodes.node_index(q, 9), 9);
    EXPECT_EQ(nodes.node_index(p, -7), 5);
}

TEST(nmkNodeUnduplicator, takes_the_new_index_after_clear) {
    nmkNodeUnduplicator nodes;
    const giPoint3 p(1, 2, 3);
    nodes.node_index(p, 5);
    nodes.clear();
    EXPECT_EQ(nodes.node_index(p, 9), 9);
    nodes.clear();
    nodes.clear();
    EXPECT_EQ(nodes.node_index(p, 1LL << 40), 1LL << 40);
}

TEST(nmkNodeUnduplicator, has_no_tolerance) {
    nmkNodeUnduplicator nodes;
    EXPECT_EQ(nodes.node_index({1, 2, 3}, 0), 0);
    EXPECT_EQ(nodes.node_index({1, 2, std::nextafter(3.0, 4.0)}, 1), 1);
}

TEST(nmkNodeUnduplicator, zero_and_minus_zero_are_one_node) {
    nmkNodeUnduplicator nodes;
    EXPECT_EQ(nodes.node_index({0.0, -0.0, 0.0}, 0), 0);
    EXPECT_EQ(nodes.node_index({-0.0, 0.0, 0.0}, 1), 0);
}

TEST(nmkNodeUnduplicator, each_corner_with_nan_is_a_new_node) {
    nmkNodeUnduplicator nodes;
    EXPECT_EQ(nodes.node_index({not_a_number, 0, 0}, 0), 0);
    EXPECT_EQ(nodes.node_index({not_a_number, 0, 0}, 1), 1);
    EXPECT_EQ(nodes.node_index({0, 0, not_a_number}, 2), 2);
}

TEST(nmkNodeUnduplicator, finds_points_behind_nan_ones) {
    nmkNodeUnduplicator nodes;
    EXPECT_EQ(nodes.node_index({1, 1, 1}, 0), 0);
    for (int i = 1; i < 3000; ++i) nodes.node_index({i * 1.0, not_a_number, 0}, i);
    EXPECT_EQ(nodes.node_index({1, 1, 1}, 3000), 0);
    EXPECT_EQ(nodes.node_index({2, 2, 2}, 3001), 3001);
    EXPECT_EQ(nodes.node_index({2, 2, 2}, 3002), 3001);
}

TEST(nmkNodeUnduplicator, infinities_are_places) {
    nmkNodeUnduplicator nodes;
    EXPECT_EQ(nodes.node_index({infinity, 0, -infinity}, 0), 0);
    EXPECT_EQ(nodes.node_index({infinity, 0, -infinity}, 1), 0);
    EXPECT_EQ(nodes.node_index({-infinity, 0, -infinity}, 2), 2);
}

TEST(nmkNodeUnduplicator, returns_what_an_ordered_set_returns) {
    std::mt19937 random(3);
    for (const int range : {2, 30, 400}) {
        nmkNodeUnduplicator nodes;
        plain::Unduplicator expected;
        const auto coordinate = [&] {
            const int value = static_cast<int>(random() % static_cast<unsigned>(range)) - range / 2;
            if (value == 1 && random() % 50 == 0) return not_a_number;
            return value == 0 && random() % 2 == 0 ? -0.0 : value * 0.125;
        };
        for (int i = 0; i < 20000; ++i) {
            const giPoint3 point(coordinate(), coordinate(), coordinate());
            ASSERT_EQ(nodes.node_index(point, i), expected.node_index(point, i))
                << "range " << range << ", corner " << i;
        }
    }
}
