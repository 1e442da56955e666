#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkAppendTri.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>

#include <climits>
#include <cmath>
#include <limits>
#include <ostream>

#include "model_samples.h"

using model_samples::nodes_of;
using model_samples::normals_of;
using model_samples::triangles_of;

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

void add_normals(giTriBlock& block) {
    giNormArrcoFeature normals;
    block.add(normals);
}

// A block of one triangle in the plane z = 0.
void fill(giTriBlock& block, bool with_normals) {
    if (with_normals) add_normals(block);
    nmkAppendTri(&block, {0, 0, 0}, {2, 0, 0}, {0, 3, 0});
}

struct RefusedCase {
    const char* name;
    double value;
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& each) { return out << each.name; }

class nmkAppendTri_refused : public testing::TestWithParam<RefusedCase> {};

}  // namespace

TEST(nmkAppendTri, a_triangle_brings_three_nodes_of_its_own) {
    giTriBlock block;
    EXPECT_EQ(nmkAppendTri(&block, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}), 0);
    EXPECT_EQ(nmkAppendTri(&block, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}), 0);
    EXPECT_EQ(nodes_of(block).size(), 6U);
    EXPECT_EQ(triangles_of(block),
              (std::vector<giTriangle>{giTriangle(0, 1, 2), giTriangle(3, 4, 5)}));
    EXPECT_FALSE(model_samples::has_normals(block));
}

TEST(nmkAppendTri, the_normal_is_a_unit_vector_and_the_same_for_three_nodes) {
    giTriBlock block;
    fill(block, true);
    EXPECT_EQ(normals_of(block), (std::vector<giVector3>(3, giVector3(0, 0, 1))));
}

TEST(nmkAppendTri, the_normal_is_divided_by_its_length) {
    giTriBlock block;
    add_normals(block);
    const giPoint3 p1(0.1, 0.2, 0.3);
    const giPoint3 p2(1.7, -0.4, 0.9);
    const giPoint3 p3(0.6, 2.1, -1.3);
    nmkAppendTri(&block, p1, p2, p3);
    const giVector3 cross = (p2 - p1).cross(p3 - p1);
    const double length = std::sqrt(cross.x * cross.x + cross.y * cross.y + cross.z * cross.z);
    EXPECT_EQ(normals_of(block)[2],
              giVector3(cross.x / length, cross.y / length, cross.z / length));
}

TEST(nmkAppendTri, a_short_normal_is_kept_as_it_came_out) {
    giTriBlock block;
    add_normals(block);
    nmkAppendTri(&block, {0, 0, 0}, {1e-5, 0, 0}, {0, 1, 0});
    EXPECT_EQ(normals_of(block)[0], giVector3(0, 0, 1e-5));
    nmkAppendTri(&block, {0, 0, 0}, {1.0000001e-5, 0, 0}, {0, 1, 0});
    EXPECT_EQ(normals_of(block)[3], giVector3(0, 0, 1));
}

TEST(nmkAppendTri, three_equal_points_have_the_zero_vector_as_normal) {
    giTriBlock block;
    add_normals(block);
    EXPECT_EQ(nmkAppendTri(&block, {4, 5, 6}, {4, 5, 6}, {4, 5, 6}), 0);
    EXPECT_EQ(normals_of(block), (std::vector<giVector3>(3, giVector3(0, 0, 0))));
}

TEST(nmkAppendTri, missing_normals_become_zero_vectors_and_surplus_ones_stay) {
    giTriBlock missing;
    fill(missing, false);
    fill(missing, true);
    EXPECT_EQ(normals_of(missing).size(), 6U);
    EXPECT_EQ(normals_of(missing)[0], giVector3(0, 0, 0));
    EXPECT_EQ(normals_of(missing)[3], giVector3(0, 0, 1));
    giTriBlock surplus;
    giNormArrcoFeature normals;
    surplus.add(normals);
    for (int i = 0; i < 5; ++i) normals->add({1, 0, 0});
    fill(surplus, true);
    EXPECT_EQ(normals_of(surplus).size(), 5U);
    EXPECT_EQ(normals_of(surplus)[2], giVector3(0, 0, 1));
    EXPECT_EQ(normals_of(surplus)[3], giVector3(1, 0, 0));
}

TEST(nmkAppendTri, the_box_grows_with_the_nodes) {
    giTriBlock block;
    fill(block, false);
    giNodeXYZ nodes;
    ASSERT_EQ(block.get(nodes), 1);
    EXPECT_EQ(nodes->box().max(), giPoint3(2, 3, 0));
    nmkAppendTri(&block, {0, 0, 9}, {2, 0, 0}, {0, 3, 0});
    EXPECT_EQ(nodes->box().max(), giPoint3(2, 3, 9));
}

TEST(nmkAppendTri, nine_doubles_are_three_corners) {
    giTriBlock block;
    const double corners[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(nmkAppendTri(&block, corners), 0);
    EXPECT_EQ(nodes_of(block),
              (std::vector<giPoint3>{giPoint3(1, 2, 3), giPoint3(4, 5, 6), giPoint3(7, 8, 9)}));
}

TEST_P(nmkAppendTri_refused, adds_nothing_whichever_double_it_is) {
    for (int i = 0; i < 9; ++i) {
        giTriBlock block;
        double corners[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
        corners[i] = GetParam().value;
        EXPECT_EQ(nmkAppendTri(&block, corners), 1) << i;
        EXPECT_EQ(block.size(), 0) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(values, nmkAppendTri_refused,
                         testing::Values(RefusedCase{"the_largest_double", largest},
                                         RefusedCase{"minus_the_largest_double", -largest},
                                         RefusedCase{"infinity", infinity},
                                         RefusedCase{"minus_infinity", -infinity},
                                         RefusedCase{"not_a_number", not_a_number}),
                         testing::PrintToStringParamName());

TEST(nmkAppendTri, takes_doubles_below_the_largest) {
    giTriBlock block;
    const double corners[] = {std::nextafter(largest, 0.0), 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(nmkAppendTri(&block, corners), 0);
}

TEST(nmkAppendTri, a_block_is_appended_with_raised_indices) {
    giTriBlock target;
    giTriBlock source;
    fill(target, false);
    fill(source, false);
    EXPECT_EQ(nmkAppendTri(&target, source), 0);
    EXPECT_EQ(nodes_of(target).size(), 6U);
    EXPECT_EQ(triangles_of(target)[1], giTriangle(3, 4, 5));
    EXPECT_EQ(triangles_of(source), std::vector<giTriangle>{giTriangle(0, 1, 2)});
}

TEST(nmkAppendTri, normals_of_two_blocks_are_joined) {
    giTriBlock target;
    giTriBlock source;
    fill(target, true);
    fill(source, true);
    nmkAppendTri(&target, source);
    EXPECT_EQ(normals_of(target), (std::vector<giVector3>(6, giVector3(0, 0, 1))));
}

TEST(nmkAppendTri, a_source_without_normals_takes_those_of_the_target_away) {
    giTriBlock target;
    giTriBlock source;
    fill(target, true);
    fill(source, false);
    nmkAppendTri(&target, source);
    EXPECT_FALSE(model_samples::has_normals(target));
}

TEST(nmkAppendTri, an_empty_array_of_normals_in_the_source_takes_those_of_the_target_away) {
    giTriBlock target;
    giTriBlock source;
    fill(target, true);
    add_normals(source);
    nmkAppendTri(&target, source);
    EXPECT_FALSE(model_samples::has_normals(target));
}

TEST(nmkAppendTri, a_target_without_normals_gets_none) {
    giTriBlock target;
    giTriBlock source;
    fill(source, true);
    nmkAppendTri(&target, source);
    EXPECT_FALSE(model_samples::has_normals(target));
    EXPECT_EQ(nodes_of(target).size(), 3U);
}

TEST(nmkAppendTri, an_empty_array_of_normals_in_the_target_stays_empty) {
    giTriBlock target;
    giTriBlock source;
    add_normals(target);
    fill(source, true);
    nmkAppendTri(&target, source);
    EXPECT_TRUE(model_samples::has_normals(target));
    EXPECT_TRUE(normals_of(target).empty());
    EXPECT_EQ(nodes_of(target).size(), 3U);
}

TEST(nmkAppendTri, other_features_stay_where_they_are) {
    giTriBlock target;
    giTriBlock source;
    nmkGiTriDatacoFeature data;
    source.add(data);
    data->set_name("source");
    nmkAppendTri(&target, source);
    EXPECT_EQ(target.get(data), 0);
    EXPECT_EQ(source.get(data), 1);
    EXPECT_EQ(source.size(), 3);
}

TEST(nmkAppendTri, a_block_appended_to_itself_doubles) {
    giTriBlock block;
    fill(block, true);
    nmkAppendTri(&block, block);
    EXPECT_EQ(nodes_of(block).size(), 6U);
    EXPECT_EQ(normals_of(block).size(), 6U);
    EXPECT_EQ(triangles_of(block)[1], giTriangle(3, 4, 5));
}

TEST(nmkAppendTri, forged_indices_wrap) {
    giTriBlock target;
    giTriBlock source;
    fill(target, false);
    model_samples::add_triangle(source, {INT_MAX, -1, INT_MIN});
    nmkAppendTri(&target, source);
    EXPECT_EQ(triangles_of(target)[1], giTriangle(INT_MIN + 2, 2, INT_MIN + 3));
}
