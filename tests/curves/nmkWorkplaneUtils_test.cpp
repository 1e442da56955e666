#include <gtest/gtest.h>
#include <nmktoolbox/curves/nmkWorkplaneUtils.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>

#include <array>
#include <cmath>
#include <random>

namespace {

const giUnitVec3 world_x(giAxis::x);
const giUnitVec3 world_y(giAxis::y);
const giUnitVec3 world_z(giAxis::z);
const giAngle rounding(giRadians, 1e-9);

void expect_near(const giPoint3& point, const giPoint3& expected) {
    EXPECT_LE(point.distance(expected), 1e-9) << point.x << " " << point.y << " " << point.z;
}

void expect_axes(const giWorkplane3& plane, const giUnitVec3& x, const giUnitVec3& y,
                 const giUnitVec3& z) {
    EXPECT_NE(plane.x_axis().parallel(x, rounding), 0);
    EXPECT_NE(plane.y_axis().parallel(y, rounding), 0);
    EXPECT_NE(plane.z_axis().parallel(z, rounding), 0);
}

giWorkplane3 at(double x, double y, double z) {
    return giWorkplane3(giPoint3(x, y, z), world_y, world_z);
}

}  // namespace

TEST(nmkWorkplaneUtils, the_mirror_workplane_is_invalid_until_it_is_set) {
    EXPECT_EQ(nmkWorkplaneUtils::get_mirror_wp_id().is_valid(), 0);
    {
        nmkObjectId mirror;
        nmkWorkplaneUtils::set_mirror_wp_id(mirror.create_reference());
        EXPECT_EQ(mirror.is_target_of(nmkWorkplaneUtils::get_mirror_wp_id()), 1);
    }
    EXPECT_EQ(nmkWorkplaneUtils::get_mirror_wp_id().is_valid(), 0);
    nmkWorkplaneUtils::set_mirror_wp_id(nmkRefToObjectId());
}

TEST(nmkWorkplaneUtils, a_workplane_expressed_in_itself_is_the_world_plane) {
    const giWorkplane3 plane(giPoint3(3, 4, 5), giUnitVec3(1, 2, 3), giUnitVec3(3, 0, -1));
    const giWorkplane3 expressed =
        nmkWorkplaneUtils::get_workplane_expressed_in_other(plane, plane);
    expect_near(expressed.origin(), giPoint3(0, 0, 0));
    expect_axes(expressed, world_x, world_y, world_z);
}

TEST(nmkWorkplaneUtils, a_workplane_is_expressed_in_the_coordinates_of_another) {
    // The other one lies at (10, 0, 0) with its X axis along y of the world.
    const giWorkplane3 other(giPoint3(10, 0, 0), -world_x, world_z);
    const giWorkplane3 expressed =
        nmkWorkplaneUtils::get_workplane_expressed_in_other(at(10, 2, 7), other);
    expect_near(expressed.origin(), giPoint3(2, 0, 7));
    expect_axes(expressed, -world_y, world_x, world_z);
}

TEST(nmkWorkplaneUtils, the_z_shift_is_measured_along_the_normal_of_the_first) {
    const giWorkplane3 a(giPoint3(1, 2, 10), world_y, world_x);
    EXPECT_EQ(nmkWorkplaneUtils::get_z_shift(a, at(4, 0, 0)), -3.0);
    EXPECT_EQ(nmkWorkplaneUtils::get_z_shift(at(4, 0, 0), a), -10.0);
    EXPECT_EQ(nmkWorkplaneUtils::get_z_shift(at(0, 0, 5), at(0, 0, 2)), 3.0);
}

TEST(nmkWorkplaneUtils, a_plane_on_the_world_z_axis_is_suitable_for_turning_in_either_sense) {
    EXPECT_TRUE(nmkWorkplaneUtils::suitable_for_turning(at(0, 0, 123), 0.01));
    const giWorkplane3 turned_over(giPoint3(0, 0, -5), world_y, -world_z);
    EXPECT_TRUE(nmkWorkplaneUtils::suitable_for_turning(turned_over, 0.01));
}

TEST(nmkWorkplaneUtils, for_turning_the_origin_is_strictly_within_the_tolerance) {
    EXPECT_TRUE(nmkWorkplaneUtils::suitable_for_turning(at(0.2499, -0.2499, 0), 0.25));
    EXPECT_FALSE(nmkWorkplaneUtils::suitable_for_turning(at(0.25, 0, 0), 0.25));
    EXPECT_FALSE(nmkWorkplaneUtils::suitable_for_turning(at(0, -0.25, 0), 0.25));
}

TEST(nmkWorkplaneUtils, for_turning_the_cross_product_is_at_most_the_tolerance) {
    const giWorkplane3 tilted(giPoint3(0, 0, 0), world_y, giUnitVec3(0.6, 0, 0.8));
    EXPECT_TRUE(nmkWorkplaneUtils::suitable_for_turning(tilted, std::abs(tilted.z_axis().x)));
    EXPECT_FALSE(nmkWorkplaneUtils::suitable_for_turning(
        tilted, std::nextafter(std::abs(tilted.z_axis().x), 0.0)));
}

TEST(nmkWorkplaneUtils, a_pure_mirror_flips_x_and_keeps_y_and_z_as_mapped) {
    const giXform3 mirror = giXform3::mirror(giPoint3(0, 5, 0), world_y);
    ASSERT_EQ(mirror.kind(), giXform3Mirror);
    giWorkplane3 out;
    ASSERT_TRUE(nmkWorkplaneUtils::transform(mirror, at(1, 2, 3), out));
    expect_near(out.origin(), giPoint3(1, 8, 3));
    // The mirror maps X, Y, Z to x, -y, z, which is left-handed.
    expect_axes(out, -world_x, -world_y, world_z);
}

TEST(nmkWorkplaneUtils, a_point_reflection_changes_the_hand_as_a_mirror_does) {
    const giXform3 reflection(giXform3Scale, -1, -1, -1);
    ASSERT_EQ(reflection.kind(), giXform3PointReflection);
    giWorkplane3 out;
    ASSERT_TRUE(nmkWorkplaneUtils::transform(reflection, at(1, 2, 3), out));
    expect_near(out.origin(), giPoint3(-1, -2, -3));
    expect_axes(out, world_x, -world_y, -world_z);
}

TEST(nmkWorkplaneUtils, a_mirror_with_a_skew_that_breaks_the_frame_returns_false) {
    const giXform3 skewed({{{-1, 0.5, 0}, {0, 1, 0}, {0, 0, 1}}}, giVector3());
    ASSERT_TRUE(skewed.changes_hand());
    const giWorkplane3 before = at(7, 8, 9);
    giWorkplane3 out = before;
    EXPECT_FALSE(nmkWorkplaneUtils::transform(skewed, at(1, 2, 3), out));
    EXPECT_EQ(out, before);
}

TEST(nmkWorkplaneUtils, a_mirror_with_a_skew_below_a_thousandth_of_a_radian_is_accepted) {
    giWorkplane3 out;
    const giXform3 slight({{{-1, 0.0009, 0}, {0, 1, 0}, {0, 0, 1}}}, giVector3());
    EXPECT_TRUE(nmkWorkplaneUtils::transform(slight, at(0, 0, 0), out));
    const giXform3 more({{{-1, 0.0011, 0}, {0, 1, 0}, {0, 0, 1}}}, giVector3());
    EXPECT_FALSE(nmkWorkplaneUtils::transform(more, at(0, 0, 0), out));
}

// An axis with the same skew against each of the others leaves the normal of their plane by the
// root of 2 times the skew, and each of them the normal of its plane by the skew.
TEST(nmkWorkplaneUtils, one_axis_of_a_mirrored_frame_that_is_skewed_too_far_is_enough_for_false) {
    const auto is_mapped = [](std::size_t axis, double skew) {
        std::array<std::array<double, 3>, 3> rows = {{{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
        for (std::size_t row = 0; row < 3; ++row) {
            if (row != axis) rows[row][axis] = skew;
        }
        giWorkplane3 out;
        return nmkWorkplaneUtils::transform(giXform3(rows, giVector3()), at(0, 0, 0), out);
    };
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_TRUE(is_mapped(axis, 0.0007)) << axis;
        EXPECT_FALSE(is_mapped(axis, 0.0008)) << axis;
    }
}

TEST(nmkWorkplaneUtils, a_map_that_keeps_the_hand_is_left_to_the_transform_even_with_a_skew) {
    const giXform3 skewed({{{1, 0.5, 0}, {0, 1, 0}, {0, 0, 1}}}, giVector3(0, 0, 1));
    ASSERT_EQ(skewed.kind(), giXform3Affine);
    giWorkplane3 out;
    EXPECT_TRUE(nmkWorkplaneUtils::transform(skewed, at(1, 2, 3), out));
    expect_near(out.origin(), giPoint3(2, 2, 4));
    expect_axes(out, giUnitVec3(1, -0.5, 0), giUnitVec3(0.5, 1, 0), world_z);
}

TEST(nmkWorkplaneUtils, a_workplane_can_be_transformed_in_place) {
    giWorkplane3 plane = at(1, 2, 3);
    EXPECT_TRUE(
        nmkWorkplaneUtils::transform(giXform3::mirror(giPoint3(0, 0, 0), world_x), plane, plane));
    expect_near(plane.origin(), giPoint3(-1, 2, 3));
    expect_axes(plane, world_x, world_y, world_z);
}

TEST(nmkWorkplaneUtils, generated_maps_that_change_the_hand_keep_y_and_z_and_reverse_x) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (int i = 0; i < 1000; ++i) {
        const giUnitVec3 normal(any(random), any(random), any(random) + 2.0);
        const giUnitVec3 axis(any(random), any(random) + 2.0, any(random));
        const giXform3 mirror = giXform3::mirror(giPoint3(any(random), 0, 0), normal);
        const giXform3 turn =
            giXform3::rotation(giPoint3(0, 1, 0), axis, giAngle(giRadians, 3 * any(random)));
        const giXform3 xform = turn * giXform3(giXform3Scale, 2, 2, 2) * mirror;
        ASSERT_TRUE(xform.changes_hand());
        const giWorkplane3 in(giPoint3(any(random), any(random), any(random)), axis, normal);
        giWorkplane3 out;
        ASSERT_TRUE(nmkWorkplaneUtils::transform(xform, in, out));
        expect_near(out.origin(), xform.transform(in.origin()));
        expect_axes(out, -giUnitVec3(xform.transform(in.x_axis().vector())),
                    giUnitVec3(xform.transform(in.y_axis().vector())),
                    giUnitVec3(xform.transform(in.z_axis().vector())));
    }
}

TEST(nmkWorkplaneUtils, a_workplane_with_an_axis_takes_axis_x_z_for_its_reference) {
    const giWorkplane3 plane =
        nmkWorkplaneUtils::workplane_with_axis(giVector3(2, 0, 0), giPoint3(1, 2, 3));
    EXPECT_EQ(plane.origin(), giPoint3(1, 2, 3));
    expect_axes(plane, world_z, -world_y, world_x);
}

TEST(nmkWorkplaneUtils, a_workplane_with_an_axis_along_z_takes_the_second_reference) {
    const giWorkplane3 plane =
        nmkWorkplaneUtils::workplane_with_axis(giVector3(0, 0, 5), giPoint3(0, 0, 0));
    expect_axes(plane, world_y, -world_x, world_z);
    const giWorkplane3 nearly =
        nmkWorkplaneUtils::workplane_with_axis(giVector3(0, 0.9e-5, 1), giPoint3(0, 0, 0));
    EXPECT_NE(nearly.y_axis().parallel(-world_x, giAngle(giRadians, 1e-4)), 0);
    const giWorkplane3 beyond =
        nmkWorkplaneUtils::workplane_with_axis(giVector3(0, 1.1e-5, 1), giPoint3(0, 0, 0));
    EXPECT_NE(beyond.y_axis().parallel(world_x, giAngle(giRadians, 1e-4)), 0);
}

TEST(nmkWorkplaneUtils, a_workplane_with_an_axis_and_an_unset_origin_lies_at_0) {
    const giWorkplane3 plane =
        nmkWorkplaneUtils::workplane_with_axis(giVector3(0, 1, 0), giPoint3());
    EXPECT_EQ(plane.origin(), giPoint3(0, 0, 0));
    expect_axes(plane, world_z, world_x, world_y);
}

TEST(nmkWorkplaneUtils, an_axis_that_counts_as_zero_gives_a_workplane_without_axes) {
    const giWorkplane3 plane =
        nmkWorkplaneUtils::workplane_with_axis(giVector3(0, 0, 1e-6), giPoint3(1, 2, 3));
    EXPECT_FALSE(plane.is_set());
    EXPECT_FALSE(plane.x_axis().is_set());
}
