#include <curves/curve_shapes.h>
#include <gtest/gtest.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkLine.h>
#include <ngk/ngk_flue_bztmag.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <cmath>

using namespace curve_shapes;

namespace {

const giUnitVec3 x(giAxis::x);
const giUnitVec3 y(giAxis::y);
const giUnitVec3 unset;
const giPoint3 origin(0, 0, 0);
const giPoint3 far_end(6, 0, 0);
const giUnitVec3 up(3, 4, 0);
const giUnitVec3 down(3, -4, 0);

ngkCurvePtr3 bezier(const giUnitVec3& start_tangent, const giUnitVec3& end_tangent) {
    return nmkNgkMakeUtils::make_bezier_curve(origin, far_end, start_tangent, end_tangent);
}

void expect_points(const ngkCurvePtr3& curve, const std::vector<giPoint3>& expected) {
    const auto* const found = as<ngkBezCurve3>(curve);
    ASSERT_TRUE(found);
    ASSERT_EQ(found->degree() + 1, static_cast<int>(expected.size()));
    for (int i = 0; i <= found->degree(); ++i)
        expect_near(found->point(i), expected[static_cast<std::size_t>(i)], 1e-12);
}

}  // namespace

TEST(nmkNgkMakeUtils_bezier, two_tangents_give_a_cubic_whose_magnitudes_reach_along_the_chord) {
    // A chord of 6 and cosines of 0.6: magnitudes of 10, a third of which is 10 / 3.
    expect_points(bezier(up, down), {origin, {2, 8.0 / 3, 0}, {4, 8.0 / 3, 0}, far_end});
}

TEST(nmkNgkMakeUtils_bezier, a_cosine_at_or_below_a_half_counts_as_a_half) {
    // Magnitudes of twice the chord, a third of which is 4.
    expect_points(bezier(y, -y), {origin, {0, 4, 0}, {6, 4, 0}, far_end});
    const giUnitVec3 steep(7, 24, 0);
    expect_points(bezier(steep, -y), {origin, {1.12, 3.84, 0}, {6, 4, 0}, far_end});
    expect_points(bezier(-up, -down), {origin, {-2.4, -3.2, 0}, {8.4, -3.2, 0}, far_end});
}

TEST(nmkNgkMakeUtils_bezier, one_unset_tangent_gives_a_parabola) {
    expect_points(bezier(up, unset), {origin, {3, 4, 0}, far_end});
    expect_points(bezier(unset, down), {origin, {3, 4, 0}, far_end});
    expect_points(bezier(y, unset), {origin, {0, 6, 0}, far_end});
}

TEST(nmkNgkMakeUtils_bezier, both_tangents_unset_or_along_the_chord_give_a_line) {
    EXPECT_TRUE(as<ngkLine3>(bezier(unset, unset)));
    EXPECT_TRUE(as<ngkLine3>(bezier(x, x)));
    EXPECT_TRUE(as<ngkLine3>(bezier(x, unset)));
}

TEST(nmkNgkMakeUtils_bezier,
     without_a_start_tangent_only_an_end_tangent_that_points_back_is_straight) {
    EXPECT_TRUE(as<ngkLine3>(bezier(unset, -x)));
    EXPECT_FALSE(bezier(unset, x));
}

TEST(nmkNgkMakeUtils_bezier, tangents_along_the_chord_that_do_not_lead_to_the_end_are_refused) {
    EXPECT_FALSE(bezier(-x, -x));
    EXPECT_FALSE(bezier(x, -x));
    EXPECT_FALSE(bezier(-x, x));
    EXPECT_FALSE(bezier(-x, unset));
}

TEST(nmkNgkMakeUtils_bezier, parallel_tangents_across_the_chord_are_a_proper_curve) {
    EXPECT_TRUE(as<ngkBezCurve3>(bezier(y, y)));
    EXPECT_TRUE(as<ngkBezCurve3>(bezier(y, -y)));
}

TEST(nmkNgkMakeUtils_bezier, ends_that_coincide_are_refused) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(origin, {1e-5, 0, 0}, y, -y));
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(origin, origin, unset, unset));
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(origin, {0, 1e-6, 0}, x, unset));
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(origin, origin, unset, x));
}

TEST(nmkNgkMakeUtils_bezier, without_a_method_the_chord_decides) {
    const auto named =
        nmkNgkMakeUtils::make_bezier_curve(origin, far_end, up, down, nmkNGKBezierMagnitudeChord);
    expect_points(bezier(up, down), {origin, as<ngkBezCurve3>(named)->point(1),
                                     as<ngkBezCurve3>(named)->point(2), far_end});
}

TEST(nmkNgkMakeUtils_bezier, any_other_method_takes_the_magnitudes_of_the_kernel) {
    double first = 0.0;
    double second = 0.0;
    ngk_flue_bztmag(origin, far_end, up, down, 1, first, second);
    for (const int method : {1, 2, -7}) {
        expect_points(
            nmkNgkMakeUtils::make_bezier_curve(origin, far_end, up, down,
                                               static_cast<nmkNGKBezierMagnitudeMethod>(method)),
            {origin, origin + up.vector() * (first / 3), far_end - down.vector() * (second / 3),
             far_end});
    }
}

TEST(nmkNgkMakeUtils_bezier, a_parabola_does_not_follow_the_method) {
    expect_points(
        nmkNgkMakeUtils::make_bezier_curve(origin, far_end, up, unset, nmkNGKBezierMagnitudeArc),
        {origin, {3, 4, 0}, far_end});
}

TEST(nmkNgkMakeUtils_bezier, magnitudes_that_are_given_are_taken_without_classification) {
    const auto curve = [](const giPoint3& end, const giUnitVec3& tangent, double magnitude) {
        return nmkNgkMakeUtils::make_bezier_curve(origin, end, tangent, -tangent, 3.0, magnitude);
    };
    expect_points(curve(far_end, y, 6.0), {origin, {0, 1, 0}, {6, 2, 0}, far_end});
    expect_points(curve(origin, y, 6.0), {origin, {0, 1, 0}, {0, 2, 0}, origin});
    expect_points(curve(far_end, -x, -6.0), {origin, {-1, 0, 0}, {8, 0, 0}, far_end});
}

TEST(nmkNgkMakeUtils_bezier, a_curve_that_cannot_be_evaluated_is_refused) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(origin, far_end, unset, y, 3.0, 3.0));
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(origin, far_end, x, y, not_a_number, 3.0));
    EXPECT_FALSE(nmkNgkMakeUtils::make_bezier_curve(giPoint3(), far_end, x, y));
}

TEST(nmkNgkMakeUtils_bezier, the_tolerance_is_read_once_in_a_process) {
    EXPECT_TRUE(bezier(y, -y));
    const ScopedTolerance wider(ngk_TOLCOINCPOINT3D, 10.0);
    EXPECT_TRUE(bezier(y, -y));
}

TEST(nmkNgkMakeUtils_bezier, hostile_numbers_give_a_valid_curve_or_an_empty_handle) {
    const auto check = [](const ngkCurvePtr3& curve) { EXPECT_TRUE(!curve || curve->is_valid()); };
    for (const double a : hostile_values) {
        for (const double b : hostile_values) {
            const giPoint3 p(a, b, 0);
            const giUnitVec3 t(giUnit::already, b, a, 0);
            check(nmkNgkMakeUtils::make_bezier_curve(p, {1, a, b}, t, y));
            check(nmkNgkMakeUtils::make_bezier_curve(origin, p, y, t));
            check(nmkNgkMakeUtils::make_bezier_curve(origin, p, unset, t));
            check(nmkNgkMakeUtils::make_bezier_curve(p, origin, t, unset));
            check(nmkNgkMakeUtils::make_bezier_curve(p, far_end, t, y, nmkNGKBezierMagnitudeArc));
            check(nmkNgkMakeUtils::make_bezier_curve(origin, far_end, x, y, a, b));
        }
    }
}
