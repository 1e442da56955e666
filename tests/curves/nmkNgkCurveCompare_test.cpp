#include <curves/curve_shapes.h>
#include <curves/plain_polyline.h>
#include <gtest/gtest.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkPolygonizeTRP3.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <nmktoolbox/curves/nmkNgkCurveCompare.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using namespace curve_shapes;

namespace {

using Points = plain_polyline::Points;

const giUnitVec3 x(giAxis::x);
const giUnitVec3 y(giAxis::y);
const giUnitVec3 z(giAxis::z);

int compare(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance) {
    return nmkNgkCurveCompare::compare(a, b, tolerance);
}

ngkCurvePtr3 polyline(const Points& points) { return ngkCurvePtr3(new ngkPolyline3(points)); }

ngkCurvePtr3 line(const giPoint3& start, const giPoint3& end) {
    return ngkCurvePtr3(new ngkLine3(start, end));
}

ngkCurvePtr3 pocket(double radius) {
    return nmkNgkMakeUtils::make_filleted_rectangle(giWorkplane3(), {60, 40}, radius);
}

ngkCurvePtr3 wave() {
    return nmkNgkMakeUtils::make_bezier_curve({0, 0, 0}, {10, 0, 0}, giUnitVec3(1, 1, 0),
                                              giUnitVec3(1, 1, 0.5));
}

// Both curves sampled into arrays.
int plain_compare(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance) {
    if (!a || !b || !a->is_valid() || !b->is_valid()) return 0;
    for (const double end : {0.0, 1.0})
        if (!(point_at(a, end).distance(point_at(b, end)) <= tolerance)) return 0;
    const auto points_of = [&](const ngkCurvePtr3& curve) {
        const ngkPolyline3 polygon = curve->curve_polygon(ngkPolygonizeTRP3(tolerance));
        return Points(polygon.points().begin(), polygon.points().end());
    };
    const Points on_a = points_of(a);
    const Points on_b = points_of(b);
    const auto length = [](const Points& points) {
        return plain_polyline::length_to(points, static_cast<int>(points.size()) - 1);
    };
    const int n = static_cast<int>(
        std::max(std::ceil(length(on_a) / tolerance), std::ceil(length(on_b) / tolerance)));
    Points samples_a = plain_polyline::equally_spaced(on_a, n + 1, 1e-5);
    Points samples_b = plain_polyline::equally_spaced(on_b, n + 1, 1e-5);
    samples_a.resize(static_cast<std::size_t>(n) + 1);
    samples_b.resize(static_cast<std::size_t>(n) + 1);
    for (std::size_t i = 1; i <= static_cast<std::size_t>(n); ++i) {
        if (!samples_a[i].is_set() || !samples_b[i].is_set()) return 0;
        if (!(samples_a[i].distance(samples_b[i]) <= 3 * tolerance)) return 0;
    }
    return 1;
}

}  // namespace

TEST(nmkNgkCurveCompare, a_curve_is_the_same_as_itself_and_as_itself_made_again) {
    for (const double tolerance : {1.0, 1e-2, 1e-4}) {
        EXPECT_EQ(compare(pocket(5), pocket(5), tolerance), 1);
        EXPECT_EQ(compare(wave(), wave(), tolerance), 1);
    }
    const auto curve = wave();
    EXPECT_EQ(compare(curve, curve, 1e-3), 1);
}

TEST(nmkNgkCurveCompare, a_curve_differs_from_its_reverse) {
    EXPECT_EQ(compare(wave(), wave()->reverse(), 1e-3), 0);
    EXPECT_EQ(compare(wave(), ngkCurvePtr3(new ngkReverseCurve3(wave())), 1e-3), 0);
}

TEST(nmkNgkCurveCompare, a_closed_curve_passes_the_test_of_its_ends_but_differs_from_its_reverse) {
    const auto circle = nmkNgkMakeUtils::make_circle(giWorkplane3(), 5.0);
    EXPECT_EQ(compare(circle, circle->reverse(), 1e-3), 0);
    EXPECT_EQ(compare(pocket(5), pocket(5)->reverse(), 1e-3), 0);
}

TEST(nmkNgkCurveCompare, a_curve_that_runs_there_and_back_is_the_same_as_its_reverse) {
    const auto there_and_back = polyline({{0, 0, 0}, {4, 3, 0}, {0, 0, 0}});
    EXPECT_EQ(compare(there_and_back, there_and_back->reverse(), 1e-3), 1);
}

TEST(nmkNgkCurveCompare, curves_of_different_kinds_with_the_same_points_are_the_same) {
    EXPECT_EQ(
        compare(line({0, 0, 0}, {4, 3, 0}), polyline({{0, 0, 0}, {1.2, 0.9, 0}, {4, 3, 0}}), 1e-3),
        1);
    EXPECT_EQ(compare(wave(), ngkCurvePtr3(new ngkReverseCurve3(wave()->reverse())), 1e-3), 1);
}

TEST(nmkNgkCurveCompare, ends_are_at_most_one_tolerance_apart_and_equal_passes) {
    const auto start = line({0, 0, 0}, {8, 0, 0});
    EXPECT_EQ(compare(start, line({0, 0.25, 0}, {8, 0, 0}), 0.25), 1);
    EXPECT_EQ(compare(start, line({0, 0.2500001, 0}, {8, 0, 0}), 0.25), 0);
    EXPECT_EQ(compare(start, line({0, 0, 0}, {8, 0, 0.25}), 0.25), 1);
    EXPECT_EQ(compare(start, line({0, 0, 0}, {8, 0, 0.2500001}), 0.25), 0);
}

TEST(nmkNgkCurveCompare, samples_are_at_most_three_tolerances_apart) {
    const auto straight = polyline({{0, 0, 0}, {4, 0, 0}, {8, 0, 0}});
    const auto bent = [](double by) { return polyline({{0, 0, 0}, {4, by, 0}, {8, 0, 0}}); };
    EXPECT_EQ(compare(straight, bent(0.7), 0.25), 1);
    EXPECT_EQ(compare(straight, bent(0.8), 0.25), 0);
}

TEST(nmkNgkCurveCompare, samples_that_are_exactly_three_tolerances_apart_are_the_same) {
    // Both are equally long, and their middle is a sample.
    const auto bent = [](double by) { return polyline({{0, 0, 0}, {4.13, by, 0}, {8.26, 0, 0}}); };
    EXPECT_EQ(compare(bent(0.375), bent(-0.375), 0.25), 1);
    EXPECT_EQ(compare(bent(0.3750001), bent(-0.3750001), 0.25), 0);
}

TEST(nmkNgkCurveCompare, the_first_sample_is_never_compared_again) {
    // Both starts are the same, and the one sample that is compared is the end.
    const auto a = polyline({{0, 0, 0}, {0, 1.5, 0}, {0, 0.5, 0}});
    const auto b = polyline({{0, 0, 0}, {0, -1.5, 0}, {0, 0.5, 0}});
    EXPECT_EQ(compare(a, b, 4.0), 1);
    EXPECT_EQ(compare(a, b, 0.1), 0);
}

TEST(nmkNgkCurveCompare, two_point_curves_are_the_same_where_their_ends_are) {
    const auto at = [](double px) { return nmkNgkMakeUtils::make_point_curve({px, 0, 0}); };
    EXPECT_EQ(compare(at(1), at(1), 1e-3), 1);
    EXPECT_EQ(compare(at(1), at(1.25), 0.25), 1);
    EXPECT_EQ(compare(at(1), at(1.26), 0.25), 0);
    EXPECT_EQ(compare(at(1), at(1), 0.0), 1);
    EXPECT_EQ(compare(polyline({{1, 0, 0}}), at(1), 1e-3), 1);
}

TEST(nmkNgkCurveCompare, a_point_differs_from_a_loop_that_returns_to_it) {
    const auto loop = nmkNgkMakeUtils::make_circle(giWorkplane3(), 5.0);
    EXPECT_EQ(compare(nmkNgkMakeUtils::make_point_curve({5, 0, 0}), loop, 1e-2), 0);
}

TEST(nmkNgkCurveCompare, what_cannot_be_used_is_never_the_same_as_itself) {
    for (const auto& curve : {ngkCurvePtr3(), nmkNgkMakeUtils::make_half_line(giPoint3(), x),
                              nmkNgkMakeUtils::make_half_line({0, 0, 0}, x),
                              nmkNgkMakeUtils::make_inf_line({0, 0, 0}, x), polyline({}),
                              ngkCurvePtr3(new ngkCompCurve3(1e-5))}) {
        EXPECT_EQ(compare(curve, curve, 1e-3), 0);
        EXPECT_EQ(compare(curve, wave(), 1e-3), 0);
        EXPECT_EQ(compare(wave(), curve, 1e-3), 0);
    }
}

TEST(nmkNgkCurveCompare, any_tolerance_comes_to_an_end) {
    for (const double tolerance : {0.0, 1e-300, 5e-324}) {
        EXPECT_EQ(compare(line({0, 0, 0}, {5, 0, 0}), line({0, 0, 0}, {5, 0, 0}), tolerance), 1);
        EXPECT_EQ(compare(line({0, 0, 0}, {5, 0, 0}), line({0, 0, 0}, {5, 0, 1e-9}), tolerance), 0);
    }
    for (const double tolerance : {-1.0, -1e-300, not_a_number, -infinite})
        EXPECT_EQ(compare(wave(), wave(), tolerance), 0) << tolerance;
    EXPECT_EQ(compare(wave(), wave()->reverse(), infinite), 1);
}

TEST(nmkNgkCurveCompare, a_huge_curve_does_not_overflow_the_number_of_samples) {
    const auto far_away = line({0, 0, 0}, {1e90, 0, 0});
    EXPECT_EQ(compare(far_away, far_away, 1e-3), 1);
}

TEST(nmkNgkCurveCompare, hostile_numbers_neither_crash_nor_hang) {
    for (const double a : hostile_values) {
        for (const double b : hostile_values) {
            const auto first = polyline({{a, b, 0}, {0, 0, b}, {1, a, 0}});
            const auto second = line({a, b, 0}, {1, a, 0});
            const int is_same = compare(first, second, 0.01);
            EXPECT_TRUE(is_same == 0 || is_same == 1);
            EXPECT_EQ(compare(second, first, 0.01), is_same);
        }
        EXPECT_EQ(compare(wave(), wave(), a), a >= 0.0 ? 1 : 0) << a;
    }
}

TEST(nmkNgkCurveCompare, an_unset_sample_differs_from_another) {
    // The middle of the length is exactly the tolerance beyond the first segment, where the walk
    // stops and finds no point.
    const ScopedTolerance binary(ngk_TOLCOINCPOINT3D, 0.5);
    const auto stuck = polyline({{0, 0, 0}, {0.5, 0, 0}, {0.5, 0, 0}, {2, 0, 0}});
    EXPECT_EQ(compare(stuck, stuck, 1.0), 0);
    const ScopedTolerance usual(ngk_TOLCOINCPOINT3D, 1e-5);
    EXPECT_EQ(compare(stuck, stuck, 1.0), 1);
}

TEST(nmkNgkCurveCompare, streamed_samples_give_the_result_of_arrays) {
    std::mt19937_64 random(50);
    std::uniform_real_distribution<double> step(-1.0, 1.0);
    int same = 0;
    for (int i = 0; i < 300; ++i) {
        Points points = {{0, 0, 0}};
        for (int j = 0; j < 8; ++j)
            points.push_back(points.back() + giVector3(step(random), step(random), step(random)));
        Points moved = points;
        const double by = 0.05 * step(random);
        for (std::size_t j = 1; j + 1 < moved.size(); ++j)
            moved[j] = moved[j] + giVector3(step(random), step(random), step(random)) * by;
        const double tolerance = i % 2 == 0 ? 0.02 : 0.007;
        const int expected = plain_compare(polyline(points), polyline(moved), tolerance);
        ASSERT_EQ(compare(polyline(points), polyline(moved), tolerance), expected) << i;
        same += expected;
    }
    EXPECT_GT(same, 50);
    EXPECT_LT(same, 250);
}

TEST(nmkNgkCurveCompare, curves_of_the_maker_compare_as_their_arrays_do) {
    const std::array curves = {pocket(5),
                               pocket(5.05),
                               pocket(6),
                               wave(),
                               nmkNgkMakeUtils::make_circle(giWorkplane3(), 5.0),
                               nmkNgkMakeUtils::make_circle(giWorkplane3(), 5.02)};
    for (const auto& a : curves)
        for (const auto& b : curves)
            for (const double tolerance : {0.3, 0.03})
                EXPECT_EQ(compare(a, b, tolerance), plain_compare(a, b, tolerance));
    EXPECT_EQ(compare(pocket(5), pocket(6), 0.03), 0);
}
