#include <curves/curve_shapes.h>
#include <gtest/gtest.h>
#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkCurveOnSurf3.h>
#include <ngk/ngkElementarySurfs.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>
#include <nmktoolbox/curves/nmkNgkSubCurves.h>

#include <array>

using namespace curve_shapes;

namespace {

const giPoint3 a(0, 0, 0);
const giPoint3 b(1, 0, 0);
const giPoint3 c(1, 2, 0);

ngkCurvePtr3 line(const giPoint3& start, const giPoint3& end) {
    return ngkCurvePtr3(new ngkLine3(start, end));
}

// Shares the two lines.
ngkCurvePtr3 composite(const ngkCurvePtr3& first, const ngkCurvePtr3& second) {
    const coPrf<ngkCompCurve3> joined(new ngkCompCurve3(1e-5));
    joined->add_segment_end(first);
    joined->add_segment_end(second);
    return ngkCurvePtr3(joined);
}

ngkCurvePtr2 corner_in_the_plane() {
    return ngkCurvePtr2(
        new ngkPolyline2(std::array{giPoint2(0, 0), giPoint2(1, 0), giPoint2(1, 2)}));
}

void expect_lines_of_the_corner(const std::vector<ngkCurvePtr2>& pieces) {
    ASSERT_EQ(pieces.size(), 2U);
    for (const auto& piece : pieces) ASSERT_TRUE(as<ngkLine2>(piece));
    EXPECT_EQ(as<ngkLine2>(pieces[0])->start(), giPoint2(0, 0));
    EXPECT_EQ(as<ngkLine2>(pieces[0])->end(), giPoint2(1, 0));
    EXPECT_EQ(as<ngkLine2>(pieces[1])->start(), giPoint2(1, 0));
    EXPECT_EQ(as<ngkLine2>(pieces[1])->end(), giPoint2(1, 2));
}

}  // namespace

TEST(nmkNgkSubCurves, a_line_is_its_only_piece_as_the_same_object) {
    const ngkCurvePtr3 curve = line(a, b);
    EXPECT_EQ(nmkNgkSubCurves::sub_curves(curve), std::vector{curve});
    const ngkCurvePtr2 flat(new ngkLine2(giPoint2(0, 0), giPoint2(1, 1)));
    EXPECT_EQ(nmkNgkSubCurves::sub_curves(flat), std::vector{flat});
}

TEST(nmkNgkSubCurves, a_polyline_in_space_stays_whole_and_one_in_the_plane_gives_its_lines) {
    const ngkCurvePtr3 polyline(new ngkPolyline3(std::array{a, b, c}));
    EXPECT_EQ(nmkNgkSubCurves::sub_curves(polyline), std::vector{polyline});
    expect_lines_of_the_corner(nmkNgkSubCurves::sub_curves(corner_in_the_plane()));
}

TEST(nmkNgkSubCurves, equal_neighbours_in_the_plane_give_a_line_too) {
    const giPoint2 p(1, 1);
    const ngkCurvePtr2 polyline(new ngkPolyline2(std::array{p, p, giPoint2(2, 2)}));
    const auto pieces = nmkNgkSubCurves::sub_curves(polyline);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(as<ngkLine2>(pieces[0])->start(), as<ngkLine2>(pieces[0])->end());
}

TEST(nmkNgkSubCurves, a_polyline_in_the_plane_of_one_point_or_none_gives_no_piece) {
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(ngkCurvePtr2(new ngkPolyline2)).empty());
    const ngkCurvePtr2 point(new ngkPolyline2(std::array{giPoint2(1, 1)}));
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(point).empty());
}

TEST(nmkNgkSubCurves, an_empty_handle_and_an_empty_composite_give_no_piece) {
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(ngkCurvePtr3()).empty());
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(ngkCurvePtr2()).empty());
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(ngkCurvePtr3(new ngkCompCurve3(1e-5))).empty());
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(ngkCurvePtr2(new ngkCompCurve2(1e-5))).empty());
    const ngkCurvePtr3 around_nothing(new ngkReverseCurve3{ngkCurvePtr3()});
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(around_nothing).empty());
}

TEST(nmkNgkSubCurves, a_composite_gives_the_pieces_of_each_segment_in_turn_as_the_same_objects) {
    const ngkCurvePtr3 first = line(a, b);
    const ngkCurvePtr3 second = line(b, c);
    const ngkCurvePtr3 third(new ngkPolyline3(std::array{c, a}));
    const auto pieces = nmkNgkSubCurves::sub_curves(composite(composite(first, second), third));
    EXPECT_EQ(pieces, (std::vector{first, second, third}));
}

TEST(nmkNgkSubCurves, reversed_pieces_keep_the_inner_order_and_share_the_objects_inside) {
    const ngkCurvePtr3 first = line(a, b);
    const ngkCurvePtr3 second = line(b, c);
    const ngkCurvePtr3 reversed(new ngkReverseCurve3(composite(first, second)));
    const auto pieces = nmkNgkSubCurves::sub_curves(reversed);
    ASSERT_EQ(pieces.size(), 2U);
    ASSERT_TRUE(as<ngkReverseCurve3>(pieces[0]));
    EXPECT_EQ(as<ngkReverseCurve3>(pieces[0])->curve(), first);
    EXPECT_EQ(as<ngkReverseCurve3>(pieces[1])->curve(), second);
    EXPECT_EQ(point_at(pieces[0], 0.0), b);
    EXPECT_EQ(point_at(pieces[1], 1.0), b);
}

TEST(nmkNgkSubCurves, transformed_pieces_have_the_same_map) {
    const giXform3 xform = giXform3::translation({0, 0, 5});
    const ngkCurvePtr3 first = line(a, b);
    const ngkCurvePtr3 moved(new ngkTransformedCurve3(composite(first, line(b, c)), xform));
    const auto pieces = nmkNgkSubCurves::sub_curves(moved);
    ASSERT_EQ(pieces.size(), 2U);
    ASSERT_TRUE(as<ngkTransformedCurve3>(pieces[0]));
    EXPECT_EQ(as<ngkTransformedCurve3>(pieces[0])->curve(), first);
    EXPECT_EQ(point_at(pieces[1], 1.0), giPoint3(1, 2, 5));
}

TEST(nmkNgkSubCurves, wraps_within_wraps_are_kept_in_their_order) {
    const giXform3 xform = giXform3::translation({0, 0, 5});
    const ngkCurvePtr3 moved(new ngkTransformedCurve3(composite(line(a, b), line(b, c)), xform));
    const auto pieces = nmkNgkSubCurves::sub_curves(ngkCurvePtr3(new ngkReverseCurve3(moved)));
    ASSERT_EQ(pieces.size(), 2U);
    ASSERT_TRUE(as<ngkReverseCurve3>(pieces[0]));
    EXPECT_TRUE(as<ngkTransformedCurve3>(as<ngkReverseCurve3>(pieces[0])->curve()));
}

TEST(nmkNgkSubCurves, a_polyline_on_a_surface_breaks_into_lines_on_the_same_surface) {
    const ngkSurfPtr plane(new ngkPlaneSurf(giWorkplane3()));
    const ngkCurvePtr3 curve(new ngkCurveOnSurf3(corner_in_the_plane(), plane));
    const auto pieces = nmkNgkSubCurves::sub_curves(curve);
    ASSERT_EQ(pieces.size(), 2U);
    for (const auto& piece : pieces) {
        ASSERT_TRUE(as<ngkCurveOnSurf3>(piece));
        EXPECT_EQ(as<ngkCurveOnSurf3>(piece)->surface(), plane);
        EXPECT_TRUE(as<ngkLine2>(as<ngkCurveOnSurf3>(piece)->curve()));
    }
    EXPECT_EQ(point_at(pieces[1], 1.0), c);
}

TEST(nmkNgkSubCurves, kinds_of_the_plane_are_taken_apart_like_those_of_space) {
    const coPrf<ngkCompCurve2> joined(new ngkCompCurve2(1e-5));
    joined->add_segment_end(corner_in_the_plane());
    expect_lines_of_the_corner(nmkNgkSubCurves::sub_curves(ngkCurvePtr2(joined)));

    const ngkCurvePtr2 reversed(new ngkReverseCurve2{ngkCurvePtr2(joined)});
    const auto reversed_pieces = nmkNgkSubCurves::sub_curves(reversed);
    ASSERT_EQ(reversed_pieces.size(), 2U);
    EXPECT_TRUE(as<ngkLine2>(as<ngkReverseCurve2>(reversed_pieces[0])->curve()));

    const ngkCurvePtr2 moved(new ngkTransformedCurve2(ngkCurvePtr2(joined), giXform2()));
    const auto moved_pieces = nmkNgkSubCurves::sub_curves(moved);
    ASSERT_EQ(moved_pieces.size(), 2U);
    EXPECT_TRUE(as<ngkTransformedCurve2>(moved_pieces[1]));
}

TEST(nmkNgkSubCurves, a_NURBS_curve_in_the_plane_gives_a_bezier_curve_for_each_knot_interval) {
    const std::array points = {giPoint2(0, 0), giPoint2(1, 2), giPoint2(3, 2), giPoint2(4, 0)};
    const std::array knots = {0.0, 0.0, 0.0, 1.0, 2.0, 2.0, 2.0};
    const ngkCurvePtr2 nurbs(new ngkNurbCurve2(2, knots, points));
    ASSERT_TRUE(nurbs->is_valid());
    const auto pieces = nmkNgkSubCurves::sub_curves(nurbs);
    ASSERT_EQ(pieces.size(), 2U);
    for (const auto& piece : pieces) EXPECT_TRUE(as<ngkBezCurve2>(piece));
    giPoint2 joint;
    giPoint2 expected;
    pieces[0]->evaluate(1.0, joint);
    nurbs->evaluate(0.5, expected);
    EXPECT_LE(joint.distance(expected), 1e-12);
}

TEST(nmkNgkSubCurves, hostile_curves_give_pieces_without_a_crash) {
    for (const double x : hostile_values) {
        const ngkCurvePtr3 bad = line(giPoint3(x, x, 0), giPoint3(0, -x, x));
        const ngkCurvePtr2 flat(
            new ngkPolyline2(std::array{giPoint2(x, 0), giPoint2(0, x), giPoint2(x, x)}));
        const ngkCurvePtr3 on_nothing(new ngkCurveOnSurf3(flat, ngkSurfPtr()));
        const ngkCurvePtr3 transformed(
            new ngkTransformedCurve3(bad, giXform3(giXform3Scale, x, 1.0, -x)));
        EXPECT_EQ(nmkNgkSubCurves::sub_curves(bad), std::vector{bad});
        EXPECT_EQ(nmkNgkSubCurves::sub_curves(flat).size(), 2U);
        EXPECT_EQ(nmkNgkSubCurves::sub_curves(on_nothing).size(), 2U);
        EXPECT_EQ(nmkNgkSubCurves::sub_curves(transformed).size(), 1U);
        EXPECT_EQ(
            nmkNgkSubCurves::sub_curves(ngkCurvePtr3(new ngkReverseCurve3(on_nothing))).size(), 2U);
    }
    EXPECT_TRUE(
        nmkNgkSubCurves::sub_curves(ngkCurvePtr3(new ngkCurveOnSurf3(ngkCurvePtr2(), ngkSurfPtr())))
            .empty());
    EXPECT_TRUE(nmkNgkSubCurves::sub_curves(
                    ngkCurvePtr3(new ngkTransformedCurve3(ngkCurvePtr3(), giXform3())))
                    .empty());
}
