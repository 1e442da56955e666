#include <geometry/giTriBlock.h>
#include <geometry/gi_hash_point.h>
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <set>

#include "model_samples.h"

TEST(giTriangle, has_three_numbers_of_32_bits) {
    giTriangle triangle(4, 5, 6);
    triangle[1] = 9;
    EXPECT_EQ(triangle, giTriangle(4, 9, 6));
    EXPECT_EQ(giLink(), giLink(-1, -1, -1));
}

TEST(giBoxArrPoint3, grows_with_unset_points) {
    giBoxArrPoint3 points;
    points.set(2, {1, 2, 3});
    EXPECT_EQ(points.size(), 3);
    EXPECT_FALSE(points[0].is_set());
    EXPECT_EQ(points[2], giPoint3(1, 2, 3));
    EXPECT_FALSE(points[-1].is_set());
    EXPECT_FALSE(points[3].is_set());
}

TEST(giBoxArrPoint3, box_follows_every_change) {
    giBoxArrPoint3 points;
    EXPECT_TRUE(points.box().is_empty());
    points.add({1, 2, 3});
    points.add({-1, 5, std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(points.box().min(), giPoint3(-1, 2, 3));
    points.set(1, {0, 0, 0});
    EXPECT_EQ(points.box().min(), giPoint3(0, 0, 0));
    EXPECT_EQ(points.box().max(), giPoint3(1, 2, 3));
}

TEST(giLinkArr, pages_have_the_size_that_was_set) {
    giLinkArr::set_page_size(1000);
    EXPECT_EQ(giLinkArr().page_size(), 1024);
    giLinkArr::set_page_size(INT_MIN);
    EXPECT_EQ(giLinkArr().page_size(), 16);
    giLinkArr::set_page_size(INT_MAX);
    EXPECT_EQ(giLinkArr().page_size(), 65536);
    giLinkArr::set_page_size(256);
}

TEST(giTriBlock, features_are_different) {
    giTriBlock block;
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    giTriArrcoFeature triangles;
    giLinkArrcoFeature links;
    for (basecoFeature* feature :
         std::initializer_list<basecoFeature*>{&nodes, &normals, &triangles, &links}) {
        EXPECT_EQ(block.add(*feature), 1);
    }
    EXPECT_EQ(block.size(), 4);
}

TEST(giTriBlock, repaging_keeps_the_elements) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    const auto corners = model_samples::corners_of(block);
    gi_repage_tri_block(block);
    EXPECT_EQ(model_samples::corners_of(block), corners);
    giTriArrcoFeature triangles;
    ASSERT_EQ(block.get(triangles), 1);
    EXPECT_EQ(triangles->page_size(), 4);
}

TEST(gi_hash_point, zero_and_minus_zero_are_one_place) {
    EXPECT_EQ(gi_hash_point({0.0, -0.0, 0.0}, 5), gi_hash_point({-0.0, 0.0, 0.0}, 5));
    EXPECT_NE(gi_hash_point({1.0, 0.0, 0.0}, 5), gi_hash_point({0.0, 1.0, 0.0}, 5));
    EXPECT_NE(gi_hash_point({1.0, 0.0, 0.0}, 5), gi_hash_point({1.0, 0.0, 0.0}, 6));
}

TEST(gi_hash_point, low_bits_of_round_coordinates_spread) {
    std::set<std::uint64_t> low_bits;
    for (int x = 0; x < 16; ++x) {
        for (int y = 0; y < 16; ++y) {
            low_bits.insert(gi_hash_point({x * 1024.0, y * 1024.0, 0.0}, 1) & 0xFFFF);
        }
    }
    // Of 256 hashes of 16 bits, about half a pair collides.
    EXPECT_GT(low_bits.size(), 250U);
}
