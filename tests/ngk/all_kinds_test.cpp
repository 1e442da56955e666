// What holds for curves of every kind, in space and in the plane.
#include <gtest/gtest.h>

#include "ngk/plain_curve.h"
#include "ngk/sample_curves.h"

namespace {

using nmk_ngk::Vec;
using plain_curve::at;

constexpr int scan_steps = 4000;

template <int Dimension>
void expect_near(const Vec<Dimension>& a, const Vec<Dimension>& b, double tolerance) {
    EXPECT_LE((a - b).norm(), tolerance);
}

template <int Dimension>
void check_derivatives(const ngkCurve<Dimension>& curve) {
    constexpr double step = 1e-5;
    for (int segment = 0; segment < curve.segment_count(); ++segment) {
        const auto [low, high] = curve.range(segment);
        // Not at simple fractions, where knots are.
        for (const double part : {0.1234, 0.4567, 0.8765}) {
            const double value = low + (high - low) * part;
            const double h = step * (high - low);
            const auto before = curve.jet_at(ngkT(segment, value - h));
            const auto here = curve.jet_at(ngkT(segment, value));
            const auto after = curve.jet_at(ngkT(segment, value + h));
            const double scale = 1.0 + here.first.norm() + here.second.norm();
            expect_near((after.point - before.point) * (0.5 / h), here.first, 1e-5 * scale);
            expect_near((after.first - before.first) * (0.5 / h), here.second, 1e-4 * scale);
        }
    }
}

/// Ends that are control points or given otherwise are kept to the bit; those of a NURBS curve
/// whose knots are not clamped are computed.
template <int Dimension>
double error_of_ends(const ngkCurve<Dimension>& curve) {
    const auto* nurbs = dynamic_cast<const ngkNurbCurve<Dimension>*>(&curve);
    return nurbs != nullptr && nurbs->knot(0) != nurbs->knot(nurbs->degree()) ? 1e-15 : 0.0;
}

template <int Dimension>
void check_reverse(const ngkCurve<Dimension>& curve) {
    const auto turned = curve.reverse();
    ASSERT_TRUE(turned && turned->is_valid());
    expect_near(at(*turned, 0.0), at(curve, 1.0), error_of_ends(curve));
    expect_near(at(*turned, 1.0), at(curve, 0.0), error_of_ends(curve));
    for (int i = 1; i < 50; ++i)
        expect_near(at(*turned, i / 50.0), at(curve, 1.0 - i / 50.0), 1e-12);
    const auto back = turned->reverse();
    for (int i = 0; i <= 50; ++i) expect_near(at(*back, i / 50.0), at(curve, i / 50.0), 1e-12);
}

template <int Dimension>
void check_split(const ngkCurve<Dimension>& curve) {
    for (const double fraction : {0.11, 0.5, 0.9}) {
        const ngkT t = curve.t_at(fraction);
        const auto [first, second] = curve.split(t);
        ASSERT_TRUE(first && first->is_valid() && second && second->is_valid()) << fraction;
        expect_near(at(*first, 0.0), at(curve, 0.0), error_of_ends(curve));
        expect_near(at(*second, 1.0), at(curve, 1.0), error_of_ends(curve));
        EXPECT_EQ(at(*first, 1.0), at(*second, 0.0));
        expect_near(at(*first, 1.0), at(curve, fraction), 1e-12);
        EXPECT_NEAR(first->length() + second->length(), curve.length(), 1e-9 * curve.length());
        // Any point of the parts is on the curve.
        for (int i = 0; i <= 8; ++i) {
            const auto point = nmk_ngk::point_of(at(*second, i / 8.0));
            EXPECT_LE(curve.closest_point(point).distance, 1e-9);
        }
    }
    for (const double fraction : {0.0, 1.0}) {
        const auto parts = curve.split(curve.t_at(fraction));
        EXPECT_FALSE(parts.first);
        EXPECT_FALSE(parts.second);
    }
}

template <int Dimension>
void check_closest(const ngkCurve<Dimension>& curve) {
    const auto points = plain_curve::samples(curve, scan_steps);
    const double step = plain_curve::length<Dimension>(points) / scan_steps;
    for (const auto& query : sample_curves::random_points<Dimension>(60, 99)) {
        const auto nearest = curve.closest_point(query);
        ASSERT_TRUE(nearest.is_set());
        EXPECT_TRUE(curve.contains(nearest.t));
        expect_near(nmk_ngk::vec_of(nearest.point), curve.point_at(nearest.t), 1e-12);
        const double scanned =
            plain_curve::least_distance<Dimension>(points, nmk_ngk::vec_of(query));
        // The scan misses the nearest point by half a step at most.
        EXPECT_LE(nearest.distance, scanned + 1e-12);
        EXPECT_GE(nearest.distance, scanned - step * 20.0);
    }
    for (int i = 0; i <= 16; ++i) {
        const auto on_it = nmk_ngk::point_of(at(curve, i / 16.0));
        EXPECT_LE(curve.closest_point(on_it).distance, 1e-14);
    }
}

/// Wherever the search begins, the result is the nearest point of all.
template <int Dimension>
void check_closest_near(const ngkCurve<Dimension>& curve) {
    int i = 0;
    for (const auto& query : sample_curves::random_points<Dimension>(20, 98)) {
        const double least = curve.closest_point(query).distance;
        const ngkT expected = curve.t_at(i++ / 20.0);
        const auto nearest = curve.closest_point(query, expected);
        ASSERT_TRUE(nearest.is_set());
        EXPECT_NEAR(nearest.distance, least, 1e-9 * least + 1e-13);
        expect_near(nmk_ngk::vec_of(nearest.point), curve.point_at(nearest.t), 1e-12);
    }
    for (const ngkT& outside : {ngkT(), ngkT(0, -1e9), ngkT(curve.segment_count(), 0.5)}) {
        const auto query = sample_curves::random_points<Dimension>(1, 97)[0];
        EXPECT_EQ(curve.closest_point(query, outside).t, curve.closest_point(query).t);
    }
}

template <int Dimension>
void check_polygon(const ngkCurve<Dimension>& curve) {
    constexpr double tolerance = 1e-3;
    ngkPolyline<Dimension> polygon;
    doublecoDynArr fractions;
    ASSERT_NE(curve.polygonize(ngkPolygonizeTRP3(tolerance), polygon, fractions), 0);
    ASSERT_EQ(polygon.point_count(), fractions.size());
    ASSERT_GE(polygon.point_count(), 2);
    EXPECT_EQ(fractions[0], 0.0);
    EXPECT_EQ(fractions[fractions.size() - 1], 1.0);
    EXPECT_EQ(nmk_ngk::vec_of(polygon.point(0)), at(curve, 0.0));
    EXPECT_EQ(nmk_ngk::vec_of(polygon.point(polygon.point_count() - 1)), at(curve, 1.0));
    for (int i = 0; i + 1 < polygon.point_count(); ++i) {
        ASSERT_LT(fractions[i], fractions[i + 1]);
        const auto a = nmk_ngk::vec_of(polygon.point(i));
        const auto b = nmk_ngk::vec_of(polygon.point(i + 1));
        expect_near(at(curve, fractions[i]), a, 1e-12);
        for (int j = 1; j < 8; ++j) {
            const double fraction = fractions[i] + (fractions[i + 1] - fractions[i]) * j / 8.0;
            EXPECT_LE(plain_curve::distance_to_line(at(curve, fraction), a, b),
                      tolerance * (1.0 + 1e-9));
        }
    }
}

template <int Dimension>
void check_length(const ngkCurve<Dimension>& curve) {
    const double h = plain_curve::length<Dimension>(plain_curve::samples(curve, scan_steps));
    const double half = plain_curve::length<Dimension>(plain_curve::samples(curve, 2 * scan_steps));
    // Polygons are too short by the square of their step; corners are left out by both.
    const double expected = half + (half - h) / 3.0;
    EXPECT_NEAR(curve.length(), expected, 1e-5 * expected);
    // Thousands of roundings are in the sum.
    EXPECT_GE(curve.length() * (1.0 + 1e-11), half);
}

template <int Dimension>
void check_box(const ngkCurve<Dimension>& curve) {
    const auto box = curve.bounding_box();
    const Vec<Dimension> low = nmk_ngk::vec_of(box.min());
    const Vec<Dimension> high = nmk_ngk::vec_of(box.max());
    Vec<Dimension> least = at(curve, 0.0);
    Vec<Dimension> most = least;
    for (const auto& point : plain_curve::samples(curve, scan_steps)) {
        for (int i = 0; i < Dimension; ++i) {
            EXPECT_LE(low[i], point[i] + 1e-13);
            EXPECT_GE(high[i], point[i] - 1e-13);
            least[i] = std::min(least[i], point[i]);
            most[i] = std::max(most[i], point[i]);
        }
    }
    // A smooth extremum lies within the square of a step of a sample, a corner within a step.
    expect_near(least, low, 1e-3);
    expect_near(most, high, 1e-3);
}

class ngkCurve3_every_kind : public testing::TestWithParam<sample_curves::Named<3>> {};
class ngkCurve2_every_kind : public testing::TestWithParam<sample_curves::Named<2>> {};

const ngkCurve3& curve_of(const sample_curves::Named<3>& one) { return *one.curve; }
const ngkCurve2& curve_of(const sample_curves::Named<2>& one) { return *one.curve; }

}  // namespace

// NOLINTBEGIN(bugprone-macro-parentheses): the name of a template cannot be in parentheses
#define NMK_TEST_EVERY_KIND(sentence, check)                                   \
    TEST_P(ngkCurve3_every_kind, sentence) { check<3>(curve_of(GetParam())); } \
    TEST_P(ngkCurve2_every_kind, sentence) { check<2>(curve_of(GetParam())); }
// NOLINTEND(bugprone-macro-parentheses)

NMK_TEST_EVERY_KIND(has_the_derivatives_that_differences_have, check_derivatives)
NMK_TEST_EVERY_KIND(runs_through_the_same_points_when_reversed, check_reverse)
NMK_TEST_EVERY_KIND(is_covered_by_the_parts_it_is_split_into, check_split)
NMK_TEST_EVERY_KIND(has_no_point_nearer_than_the_closest_one, check_closest)
NMK_TEST_EVERY_KIND(has_the_same_closest_point_wherever_it_is_expected, check_closest_near)
NMK_TEST_EVERY_KIND(stays_within_the_tolerance_of_its_polygon, check_polygon)
NMK_TEST_EVERY_KIND(has_the_length_that_its_polygons_approach, check_length)
NMK_TEST_EVERY_KIND(fills_its_box, check_box)

INSTANTIATE_TEST_SUITE_P(kinds, ngkCurve3_every_kind, testing::ValuesIn(sample_curves::in_space()),
                         [](const auto& one) { return std::string(one.param.name); });
INSTANTIATE_TEST_SUITE_P(kinds, ngkCurve2_every_kind,
                         testing::ValuesIn(sample_curves::in_the_plane()),
                         [](const auto& one) { return std::string(one.param.name); });
