#include <geometry/giWorkplane3.h>
#include <geometry/giXform3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <random>
#include <string>

namespace {

const giUnitVec3 world_x(giAxis::x);
const giUnitVec3 world_y(giAxis::y);
const giUnitVec3 world_z(giAxis::z);
const giUnitVec3 oblique(1, 2, 3);
const giPoint3 origin(0, 0, 0);

giXform3 scale(double x, double y, double z) { return giXform3(giXform3Scale, x, y, z); }
giXform3 turn() { return giXform3::rotation(origin, oblique, giAngle(giRadians, 0.7)); }
giXform3 moved(const giXform3& xform) { return giXform3::translation(giVector3(1, -2, 3)) * xform; }

struct KindCase {
    const char* name;
    giXform3 xform;
    int kind;
};

std::ostream& operator<<(std::ostream& stream, const KindCase& one) { return stream << one.name; }

class giXform3_kind : public testing::TestWithParam<KindCase> {};

}  // namespace

TEST_P(giXform3_kind, is_found_from_the_matrix) {
    EXPECT_EQ(GetParam().xform.kind(), GetParam().kind);
    EXPECT_EQ(GetParam().xform.changes_hand(), GetParam().kind >= 8 && GetParam().kind <= 14);
}

INSTANTIATE_TEST_SUITE_P(
    cases, giXform3_kind,
    testing::Values(KindCase{"identity", giXform3(), 0},
                    KindCase{"translation", moved(giXform3()), 1}, KindCase{"rotation", turn(), 2},
                    KindCase{"rigid", moved(turn()), 3},
                    KindCase{"uniform_scale", scale(2, 2, 2), 4},
                    KindCase{"uniform_scale_about_a_point", moved(scale(0.5, 0.5, 0.5)), 4},
                    KindCase{"similarity", turn() * scale(3, 3, 3), 5},
                    KindCase{"axis_scale", scale(1, 2, 3), 6},
                    KindCase{"two_negative_factors", scale(-1, -2, 3), 6},
                    KindCase{"affine", turn() * scale(1, 2, 3), 7},
                    KindCase{"mirror", giXform3::mirror(giPoint3(4, 5, 6), oblique), 8},
                    KindCase{"mirror_by_factors", scale(1, -1, 1), 8},
                    KindCase{"point_reflection", scale(-1, -1, -1), 9},
                    KindCase{"point_reflection_in_another_point", moved(scale(-1, -1, -1)), 9},
                    KindCase{"rotary_reflection", turn() * scale(-1, -1, -1), 10},
                    KindCase{"glide_reflection",
                             giXform3::translation(giVector3(1, 0, 0)) * scale(1, -1, 1), 10},
                    KindCase{"negative_scale", scale(-2, -2, -2), 11},
                    KindCase{"mirror_similarity", scale(2, -2, 2), 12},
                    KindCase{"mirror_axis_scale", scale(-1, 2, 3), 13},
                    KindCase{"mirror_affine", turn() * scale(-1, 2, 3), 14},
                    KindCase{"singular", scale(1, 1, 0), 15},
                    KindCase{"nothing", scale(0, 0, 0), 15},
                    KindCase{"nan", scale(1, std::numeric_limits<double>::quiet_NaN(), 1), 15},
                    KindCase{"infinite", scale(std::numeric_limits<double>::infinity(), 1, 1), 15},
                    KindCase{"a_very_small_scale", scale(1e-200, 1e-200, 1e-200), 4},
                    KindCase{"a_very_small_mirror", scale(-1e-200, -1e-200, -1e-200), 11}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(giXform3, rotation_turns_counter_clockwise_about_its_axis) {
    const giXform3 quarter =
        giXform3::rotation(giPoint3(1, 0, 0), world_z, giAngle(giDegrees, 90.0));
    EXPECT_LE(quarter.transform(giPoint3(2, 0, 5)).distance(giPoint3(1, 1, 5)), 1e-12);
    EXPECT_LE(quarter.transform(giPoint3(1, 0, 7)).distance(giPoint3(1, 0, 7)), 1e-12);
}

TEST(giXform3, vectors_are_not_translated) {
    EXPECT_EQ(moved(giXform3()).transform(giVector3(1, 2, 3)), giVector3(1, 2, 3));
    EXPECT_EQ(moved(giXform3()).transform(giPoint3(1, 2, 3)), giPoint3(2, 0, 6));
}

TEST(giXform3, its_inverse_undoes_it) {
    const giXform3 xform = moved(turn() * scale(1, -2, 3));
    int status = 0;
    const giXform3 inverse = xform.inverse(status);
    EXPECT_EQ(status, 1);
    const giPoint3 point(5, -6, 7);
    EXPECT_LE(inverse.transform(xform.transform(point)).distance(point), 1e-12);
    scale(1, 0, 1).inverse(status);
    EXPECT_EQ(status, 0);
}

TEST(giXform3, a_product_maps_by_the_right_one_first) {
    const giXform3 product = scale(2, 2, 2) * giXform3::translation(giVector3(1, 0, 0));
    EXPECT_EQ(product.transform(giPoint3(0, 0, 0)), giPoint3(2, 0, 0));
}

TEST(giWorkplane3, the_reference_direction_is_its_y_axis) {
    // Taken for the X axis it would turn the world plane by a quarter.
    const giWorkplane3 plane(giPoint3(1, 2, 3), world_y, world_z);
    EXPECT_EQ(plane.x_axis(), world_x);
    EXPECT_EQ(plane.y_axis(), world_y);
    EXPECT_EQ(plane.z_axis(), world_z);
    EXPECT_EQ(plane.origin(), giPoint3(1, 2, 3));
}

TEST(giWorkplane3, only_the_part_of_the_reference_across_the_normal_counts) {
    const giWorkplane3 plane(origin, giUnitVec3(0, 1, 5), world_z);
    EXPECT_NE(plane.y_axis().parallel(world_y, giAngle(giRadians, 1e-12)), 0);
    EXPECT_EQ(plane.z_axis(), world_z);
}

TEST(giWorkplane3, a_reference_along_the_normal_or_unset_is_replaced) {
    EXPECT_EQ(giWorkplane3(origin, world_z, world_z), giWorkplane3(origin, world_y, world_z));
    EXPECT_EQ(giWorkplane3(origin, giUnitVec3(), world_z), giWorkplane3(origin, world_y, world_z));
    EXPECT_EQ(giWorkplane3(origin, -world_y, world_y), giWorkplane3(origin, world_x, world_y));
}

TEST(giWorkplane3, without_a_normal_its_axes_are_unset) {
    const giWorkplane3 plane(origin, world_y, giUnitVec3());
    EXPECT_FALSE(plane.is_set());
    EXPECT_FALSE(plane.x_axis().is_set());
    EXPECT_FALSE(plane.y_axis().is_set());
    EXPECT_FALSE(giWorkplane3(giPoint3(), world_y, world_z).is_set());
    EXPECT_TRUE(giWorkplane3().is_set());
}

TEST(giWorkplane3, generated_axes_are_right_handed_and_perpendicular) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (int i = 0; i < 1000; ++i) {
        const giWorkplane3 plane(origin, giUnitVec3(any(random), any(random), any(random)),
                                 giUnitVec3(any(random), any(random), any(random)));
        ASSERT_NEAR(plane.x_axis().dot(plane.y_axis()), 0.0, 1e-12);
        ASSERT_NEAR(plane.y_axis().dot(plane.z_axis()), 0.0, 1e-9);
        const giUnitVec3 cross(plane.x_axis().vector().cross(plane.y_axis().vector()));
        ASSERT_NE(cross.parallel(plane.z_axis(), giAngle(giRadians, 1e-9)), 0);
    }
}

TEST(giWorkplane3, work_and_world_coordinates_undo_each_other) {
    const giWorkplane3 plane(giPoint3(3, 4, 5), giUnitVec3(1, 2, 3), giUnitVec3(3, 0, -1));
    const giPoint3 point(7, -8, 9);
    const giPoint3 work = plane.xform_to_work().transform(point);
    EXPECT_LE(plane.xform_to_world().transform(work).distance(point), 1e-12);
    EXPECT_LE(plane.xform_to_work().transform(plane.origin()).distance(origin), 1e-12);
    EXPECT_LE(plane.xform_to_world()
                  .transform(giPoint3(0, 2, 0))
                  .distance(plane.origin() + plane.y_axis().vector() * 2.0),
              1e-12);
}

TEST(giUnitVec3, parallel_is_a_test_of_direction) {
    const giAngle tolerance(giRadians, 0.1);
    EXPECT_NE(world_x.parallel(giUnitVec3(1, 0.0999, 0), tolerance), 0);
    EXPECT_EQ(world_x.parallel(giUnitVec3(1, 0.1005, 0), tolerance), 0);
    EXPECT_EQ(world_x.parallel(-world_x, tolerance), 0);
    EXPECT_EQ(world_x.parallel(giUnitVec3(), tolerance), 0);
    EXPECT_EQ(giUnitVec3().parallel(giUnitVec3(), tolerance), 0);
    EXPECT_FALSE((-giUnitVec3()).is_set());
}

TEST(giPoint3, coincident_is_a_ball) {
    EXPECT_NE(origin.coincident(giPoint3(0, 0, 0.25), 0.25), 0);
    EXPECT_EQ(origin.coincident(giPoint3(0.2, 0.2, 0), 0.25), 0);
}
