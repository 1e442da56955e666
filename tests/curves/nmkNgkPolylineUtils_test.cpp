#include <curves/curve_shapes.h>
#include <curves/plain_polyline.h>
#include <gtest/gtest.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkPolygonizeTRP3.h>
#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkArcLengthPositions.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>
#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>

#include <cmath>
#include <numbers>
#include <random>

using namespace curve_shapes;

namespace {

using Points = plain_polyline::Points;

constexpr double snap = 1e-5;
const giUnitVec3 x(giAxis::x);
const giUnitVec3 y(giAxis::y);

struct Evaluated {
    giPoint3 point{11, 12, 13};
    giUnitVec3 tangent{giUnit::already, 21, 22, 23};
};

Evaluated evaluated(const Points& points, double distance) {
    Evaluated result;
    nmkNgkPolylineUtils::evaluate_polyline(ngkPolyline3(points), distance, result.point,
                                           result.tangent);
    return result;
}

void expect_unset(const Evaluated& result) {
    EXPECT_EQ(result.point, giPoint3(-largest, 12, 13));
    EXPECT_EQ(result.tangent, giUnitVec3(giUnit::already, -largest, 22, 23));
}

struct Spaced {
    giPoint3coPageArr points;
    doublecoPageArr parameters;
};

Spaced spaced(const Points& points, int count, const doublecoDynArr& parameters = {}) {
    Spaced result;
    result.points.add(giPoint3(9, 9, 9));
    result.parameters.add(9.0);
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(ngkPolyline3(points), parameters, count,
                                                        result.points, result.parameters);
    return result;
}

// Two sides of a square, 4 and 3 long.
const Points corner = {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}};

class GeneratedPolyline {
  public:
    explicit GeneratedPolyline(int seed) : m_random(static_cast<unsigned>(seed)) {}

    // Long, short, tiny and empty segments.
    Points operator()(int count) {
        Points points;
        giPoint3 point(0, 0, 0);
        for (int i = 0; i < count; ++i) {
            points.push_back(point);
            const double sizes[] = {10.0, 1.0, 3e-5, 1e-5, 4e-6, 0.0};
            const double size = sizes[m_random() % 6];
            point = point + giVector3(step(), step(), step()) * size;
        }
        return points;
    }

  private:
    double step() { return m_step(m_random); }

    std::mt19937_64 m_random;
    std::uniform_real_distribution<double> m_step{-1.0, 1.0};
};

ngkCurvePtr3 quarter() {
    return nmkNgkMakeUtils::make_arc({10, 0, 0}, {0, 10, 0}, giPoint3(0, 0, 0), y, snap);
}

}  // namespace

TEST(nmkNgkPolylineUtils, evaluates_between_vertices) {
    const Evaluated result = evaluated(corner, 5.5);
    expect_near(result.point, {4, 1.5, 0}, 1e-15);
    EXPECT_EQ(result.tangent, y);
}

TEST(nmkNgkPolylineUtils, a_distance_of_0_or_less_gives_the_first_point_and_direction) {
    for (const double distance : {0.0, -0.0, -7.0, -infinite, -largest}) {
        const Evaluated result = evaluated(corner, distance);
        EXPECT_EQ(result.point, corner[0]);
        EXPECT_EQ(result.tangent, x);
    }
}

TEST(nmkNgkPolylineUtils, snaps_to_a_vertex_within_the_tolerance_to_the_bit) {
    const Points points = {{0.1, 0.2, 0.3}, {4.7, 0.2, 0.3}, {4.7, 3.1, 0.3}};
    for (const double off : {-0.9e-5, -1e-9, 0.0, 1e-9, 0.9e-5})
        EXPECT_EQ(evaluated(points, 4.6 + off).point, points[1]) << off;
    EXPECT_NE(evaluated(points, 4.6 - 1.1e-5).point, points[1]);
    EXPECT_NE(evaluated(points, 4.6 + 1.1e-5).point, points[1]);
    EXPECT_EQ(evaluated(points, 0.9e-5).point, points[0]);
}

TEST(nmkNgkPolylineUtils, a_vertex_that_is_met_exactly_has_the_direction_of_the_segment_before) {
    EXPECT_EQ(evaluated(corner, 4.0).tangent, x);
    EXPECT_EQ(evaluated(corner, 4.0 + 0.9e-5).tangent, x);
    EXPECT_EQ(evaluated(corner, 4.0 + 1.1e-5).tangent, y);
}

TEST(nmkNgkPolylineUtils, within_the_tolerance_of_the_end_is_the_last_point) {
    for (const double distance : {7.0, 7.0 - 0.9e-5, 7.0 + 0.9e-5}) {
        EXPECT_EQ(evaluated(corner, distance).point, corner[2]);
        EXPECT_EQ(evaluated(corner, distance).tangent, y);
    }
}

TEST(nmkNgkPolylineUtils, beyond_the_end_sets_only_x_of_point_and_tangent) {
    for (const double distance : {7.0 + 1.1e-5, 8.0, 1e300, infinite, largest})
        expect_unset(evaluated(corner, distance));
    expect_unset(evaluated(corner, not_a_number));
}

TEST(nmkNgkPolylineUtils, exactly_the_tolerance_beyond_the_end_there_is_nothing) {
    const ScopedTolerance binary(ngk_TOLCOINCPOINT3D, 0x1p-10);
    expect_unset(evaluated(corner, 7.0 + 0x1p-10));
    EXPECT_EQ(evaluated(corner, 7.0 + 0x1p-11).point, corner[2]);
}

TEST(nmkNgkPolylineUtils, exactly_the_tolerance_from_a_vertex_is_not_the_vertex) {
    const ScopedTolerance binary(ngk_TOLCOINCPOINT3D, 0x1p-10);
    EXPECT_EQ(evaluated(corner, 0x1p-10).point, giPoint3(0x1p-10, 0, 0));
    EXPECT_EQ(evaluated(corner, 4.0 - 0x1p-10).point, giPoint3(4.0 - 0x1p-10, 0, 0));
    EXPECT_EQ(evaluated(corner, 0x1.8p-11).point, corner[0]);
}

TEST(nmkNgkPolylineUtils, fewer_than_two_points_evaluate_to_nothing) {
    expect_unset(evaluated({}, 0.0));
    expect_unset(evaluated({{1, 2, 3}}, 0.0));
    expect_unset(evaluated({{1, 2, 3}}, 1.0));
}

TEST(nmkNgkPolylineUtils, passes_a_segment_of_no_length) {
    const Points points = {{0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {2, 3, 0}};
    EXPECT_EQ(evaluated(points, 3.0).point, giPoint3(2, 1, 0));
    EXPECT_EQ(evaluated(points, 3.0).tangent, y);
    EXPECT_EQ(evaluated(points, 2.0).point, giPoint3(2, 0, 0));
    EXPECT_EQ(spaced(points, 6).points.size(), 6);
}

TEST(nmkNgkPolylineUtils, a_first_segment_of_no_length_has_no_direction) {
    const Evaluated result = evaluated({{1, 0, 0}, {1, 0, 0}, {2, 0, 0}}, 0.0);
    EXPECT_EQ(result.point, giPoint3(1, 0, 0));
    EXPECT_FALSE(result.tangent.is_set());
}

TEST(nmkNgkPolylineUtils, a_count_of_1_or_less_empties_the_outputs) {
    for (const int count : {1, 0, -1, std::numeric_limits<int>::min()}) {
        const Spaced result = spaced(corner, count, {0, 1, 2});
        EXPECT_EQ(result.points.size(), 0);
        EXPECT_EQ(result.parameters.size(), 0);
    }
}

TEST(nmkNgkPolylineUtils, a_count_of_2_gives_the_ends_exactly_even_where_walking_would_fail) {
    const Spaced result =
        spaced({{0, 0, 0}, giPoint3(not_a_number, 0, 0), {4, 3, 0}}, 2, {5, 6, 7});
    ASSERT_EQ(result.points.size(), 2);
    EXPECT_EQ(result.points[0], giPoint3(0, 0, 0));
    EXPECT_EQ(result.points[1], giPoint3(4, 3, 0));
    EXPECT_EQ(result.parameters[0], 5.0);
    EXPECT_EQ(result.parameters[1], 7.0);
}

TEST(nmkNgkPolylineUtils, spaces_points_and_parameters_equally_along_the_length) {
    const Spaced result = spaced(corner, 8, {0.0, 10.0, 40.0});
    ASSERT_EQ(result.points.size(), 8);
    ASSERT_EQ(result.parameters.size(), 8);
    for (int i = 0; i <= 4; ++i) {
        expect_near(result.points[i], giPoint3(i, 0, 0), 1e-14);
        EXPECT_NEAR(result.parameters[i], 2.5 * i, 1e-13);
    }
    for (int i = 5; i < 8; ++i) {
        expect_near(result.points[i], giPoint3(4, i - 4, 0), 1e-14);
        EXPECT_NEAR(result.parameters[i], 10.0 + 10.0 * (i - 4), 1e-13);
    }
}

TEST(nmkNgkPolylineUtils, snaps_parameters_with_their_points_to_the_bit) {
    const Points points = {{0, 0, 0}, {1.0 + 4e-6, 0, 0}, {2, 0, 0}};
    const Spaced result = spaced(points, 3, {0.1, 0.7, 0.9});
    ASSERT_EQ(result.points.size(), 3);
    EXPECT_EQ(result.points[1], points[1]);
    EXPECT_EQ(result.parameters[1], 0.7);
}

TEST(nmkNgkPolylineUtils, the_last_point_is_exact_whatever_rounding_does_to_the_sum) {
    GeneratedPolyline generated(41);
    for (int i = 0; i < 50; ++i) {
        const Points points = generated(40);
        for (const int count : {2, 3, 7, 1000}) {
            const Spaced result = spaced(points, count);
            ASSERT_EQ(result.points.size(), count) << i;
            ASSERT_EQ(result.points[count - 1], points.back()) << i;
        }
    }
}

TEST(nmkNgkPolylineUtils, parameters_of_another_number_than_the_points_are_left_out) {
    for (const doublecoDynArr& parameters :
         {doublecoDynArr(), doublecoDynArr{1, 2}, doublecoDynArr{1, 2, 3, 4}}) {
        const Spaced result = spaced(corner, 5, parameters);
        EXPECT_EQ(result.points.size(), 5);
        EXPECT_EQ(result.parameters.size(), 0);
    }
}

TEST(nmkNgkPolylineUtils, no_points_give_no_points_and_one_gives_itself) {
    EXPECT_EQ(spaced({}, 5).points.size(), 0);
    const Spaced result = spaced({{1, 2, 3}}, 3, {0.5});
    ASSERT_EQ(result.points.size(), 3);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(result.points[i], giPoint3(1, 2, 3));
    EXPECT_EQ(result.parameters[2], 0.5);
}

TEST(nmkNgkPolylineUtils, ends_at_an_unset_vertex_and_keeps_the_points_before) {
    const Spaced nan_inside = spaced({{0, 0, 0}, {not_a_number, 0, 0}, {4, 3, 0}}, 5);
    EXPECT_EQ(nan_inside.points.size(), 1);
    EXPECT_LE(spaced({{0, 0, 0}, giPoint3(), {4, 3, 0}}, 5).points.size(), 5);
}

TEST(nmkNgkPolylineUtils, equally_spaced_points_replace_what_the_arrays_had) {
    giPoint3coPageArr points(2, 1, 1);
    doublecoPageArr parameters(2, 1, 1);
    for (int i = 0; i < 50; ++i) {
        points.add(giPoint3(7, 7, 7));
        parameters.add(7.0);
    }
    const std::vector<giPoint3> ends = {{0, 0, 0}, {10, 0, 0}};
    for (const int count : {11, 4, 5, 30}) {
        nmkNgkPolylineUtils::evaluate_equally_spaced_points(ngkPolyline3(ends), count, points,
                                                            parameters);
        ASSERT_EQ(points.size(), count);
        EXPECT_EQ(parameters.size(), 0);
        EXPECT_EQ(points[0], ends[0]);
        EXPECT_EQ(points[count - 1], ends[1]);
        EXPECT_NEAR(points[1].x, 10.0 / (count - 1), 1e-12);
        EXPECT_EQ(points.page_size(), 4);
    }
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(ngkPolyline3(ends), 1, points, parameters);
    EXPECT_EQ(points.size(), 0);
}

TEST(nmkNgkPolylineUtils, equally_spaced_points_are_those_of_a_walk_from_the_start_for_each) {
    GeneratedPolyline generated(42);
    for (int i = 0; i < 60; ++i) {
        const Points points = generated(2 + i);
        for (const int count : {3, 10, 137}) {
            const Points expected = plain_polyline::equally_spaced(points, count, snap);
            const Spaced result = spaced(points, count);
            ASSERT_EQ(result.points.size(), static_cast<int>(expected.size())) << i;
            for (int j = 0; j < result.points.size(); ++j)
                ASSERT_EQ(result.points[j], expected[static_cast<std::size_t>(j)]) << i << " " << j;
        }
    }
}

TEST(nmkNgkPolylineUtils, evaluates_as_the_plain_walk_does) {
    GeneratedPolyline generated(43);
    std::mt19937_64 random(44);
    for (int i = 0; i < 60; ++i) {
        const Points points = generated(2 + i);
        const double length = plain_polyline::length_to(points, i + 1);
        std::uniform_real_distribution<double> distance(-0.1 * length, 1.1 * length);
        for (int j = 0; j < 100; ++j) {
            const double at = j < 2 + i ? plain_polyline::length_to(points, j) : distance(random);
            const giPoint3 expected = plain_polyline::point_at(points, at, snap);
            const giPoint3 point = evaluated(points, at).point;
            ASSERT_EQ(point.is_set(), expected.is_set()) << i << " " << at;
            if (expected.is_set()) {
                ASSERT_EQ(point, expected) << i << " " << at;
            }
        }
    }
}

TEST(nmkNgkPolylineUtils, the_length_to_an_index_is_the_sum_of_the_segments_before_it) {
    const ngkPolyline3 polyline(corner);
    const auto length = [&](int index) {
        return nmkNgkPolylineUtils::polyline_length_to_index(polyline, index);
    };
    EXPECT_EQ(length(1), 4.0);
    EXPECT_EQ(length(2), 7.0);
    EXPECT_EQ(length(0), 0.0);
    EXPECT_EQ(length(-1), 0.0);
    EXPECT_EQ(length(3), 0.0);
    EXPECT_EQ(length(std::numeric_limits<int>::max()), 0.0);
    EXPECT_EQ(length(std::numeric_limits<int>::min()), 0.0);
}

TEST(nmkNgkPolylineUtils, the_arc_length_of_a_curve_is_that_of_its_polygon) {
    EXPECT_NEAR(nmkNgkPolylineUtils::get_arc_length(quarter(), 1e-6), 5 * std::numbers::pi, 1e-5);
    EXPECT_LT(nmkNgkPolylineUtils::get_arc_length(quarter(), 1.0), 5 * std::numbers::pi - 0.1);
    const auto polyline =
        nmkNgkMakeUtils::make_polyline(giPoint3coDynArr{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}});
    EXPECT_EQ(nmkNgkPolylineUtils::get_arc_length(polyline, 0.1), 7.0);
}

TEST(nmkNgkPolylineUtils, what_cannot_be_measured_has_no_arc_length) {
    EXPECT_EQ(nmkNgkPolylineUtils::get_arc_length(ngkCurvePtr3(), 0.1), 0.0);
    const auto invalid = nmkNgkMakeUtils::make_half_line(giPoint3(), x);
    EXPECT_EQ(nmkNgkPolylineUtils::get_arc_length(invalid, 0.1), 0.0);
    const auto half = nmkNgkMakeUtils::make_half_line({0, 0, 0}, x);
    EXPECT_EQ(nmkNgkPolylineUtils::get_arc_length(half, 0.1), 0.0);
    EXPECT_EQ(nmkNgkPolylineUtils::get_arc_length(ngkCurvePtr3(new ngkPolyline3), 0.1), 0.0);
}

TEST(nmkNgkPolylineUtils, spaces_points_along_a_curve_by_its_polygon) {
    giPoint3coPageArr points;
    doublecoPageArr parameters;
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(quarter(), 4, 1e-4, points, parameters);
    ASSERT_EQ(points.size(), 4);
    ASSERT_EQ(parameters.size(), 4);
    EXPECT_EQ(points[0], giPoint3(10, 0, 0));
    EXPECT_EQ(points[3], giPoint3(0, 10, 0));
    for (int i = 0; i < 4; ++i) {
        const double angle = i * std::numbers::pi / 6;
        expect_near(points[i], {10 * std::cos(angle), 10 * std::sin(angle), 0}, 1e-3);
        EXPECT_NEAR(parameters[i], i / 3.0, 1e-3);
    }
}

TEST(nmkNgkPolylineUtils, a_curve_that_cannot_be_measured_gives_no_points) {
    giPoint3coPageArr points;
    doublecoPageArr parameters;
    points.add(giPoint3(1, 1, 1));
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(ngkCurvePtr3(), 4, 1e-4, points,
                                                        parameters);
    EXPECT_EQ(points.size(), 0);
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(
        nmkNgkMakeUtils::make_inf_line({0, 0, 0}, x), 4, 1e-4, points, parameters);
    EXPECT_EQ(points.size(), 0);
}

TEST(nmkNgkPolylineUtils, finds_a_position_by_its_length_from_either_end) {
    giPoint3 point;
    ngkT parameter;
    nmkNgkPolylineUtils::get_arc_length_position(quarter(), 1, 2.5 * std::numbers::pi, 1e-7, point,
                                                 parameter);
    expect_near(point, {10 * std::sqrt(0.5), 10 * std::sqrt(0.5), 0}, 1e-4);
    nmkNgkPolylineUtils::get_arc_length_position(quarter(), 0, 1.0, 1e-7, point, parameter);
    expect_near(point, {10 * std::sin(0.1), 10 * std::cos(0.1), 0}, 1e-4);
}

TEST(nmkNgkPolylineUtils, the_parameter_of_a_position_is_the_given_curves_also_backwards) {
    const auto curve = quarter();
    for (const int forward : {1, 0}) {
        giPoint3 point;
        ngkT parameter;
        nmkNgkPolylineUtils::get_arc_length_position(curve, forward, 3.0, 1e-6, point, parameter);
        ASSERT_TRUE(parameter.is_set());
        giPoint3 again;
        EXPECT_NE(curve->evaluate(parameter, again), 0);
        EXPECT_EQ(again, point);
        EXPECT_NEAR(curve->fraction_at(parameter),
                    forward ? 0.6 / std::numbers::pi : 1 - 0.6 / std::numbers::pi, 1e-4);
    }
}

TEST(nmkNgkPolylineUtils, a_position_beyond_the_end_is_unset_and_has_segment_minus_1) {
    for (const double distance : {100.0, infinite, not_a_number}) {
        giPoint3 point(1, 2, 3);
        ngkT parameter(4, 5.0);
        nmkNgkPolylineUtils::get_arc_length_position(quarter(), 1, distance, 1e-4, point,
                                                     parameter);
        EXPECT_FALSE(point.is_set());
        EXPECT_EQ(parameter.segment, -1);
    }
}

TEST(nmkNgkPolylineUtils, what_cannot_be_measured_has_no_positions) {
    for (const auto& curve : {ngkCurvePtr3(), nmkNgkMakeUtils::make_half_line({0, 0, 0}, x),
                              nmkNgkMakeUtils::make_half_line(giPoint3(), x)}) {
        for (const int forward : {1, 0}) {
            giPoint3 point(1, 2, 3);
            ngkT parameter(4, 5.0);
            nmkNgkPolylineUtils::get_arc_length_position(curve, forward, 1.0, 1e-4, point,
                                                         parameter);
            EXPECT_FALSE(point.is_set());
            EXPECT_EQ(parameter.segment, -1);
        }
    }
}

TEST(nmkNgkPolylineUtils, hostile_numbers_neither_crash_nor_hang) {
    for (const double a : hostile_values) {
        for (const double b : hostile_values) {
            const Points points = {{a, b, 0}, {b, 1, a}, {0, a, 1}};
            evaluated(points, 1.0);
            evaluated(corner, a);
            EXPECT_LE(spaced(points, 50, {a, b, a}).points.size(), 50);
            nmkNgkPolylineUtils::polyline_length_to_index(ngkPolyline3(points), 2);
            giPoint3 point;
            ngkT parameter;
            nmkNgkPolylineUtils::get_arc_length_position(quarter(), 0, a, 0.1, point, parameter);
        }
        EXPECT_GE(nmkNgkPolylineUtils::get_arc_length(quarter(), a), 14.0);
    }
}

TEST(nmkNgkArcLengthPositions, finds_what_a_walk_from_the_start_finds) {
    GeneratedPolyline generated(45);
    std::mt19937_64 random(46);
    for (int i = 0; i < 40; ++i) {
        const Points points = generated(3 + i);
        const ngkCurvePtr3 curve(new ngkPolyline3(points));
        const nmkNgkArcLengthPositions positions(curve, 1, 1e-4);
        const double length = plain_polyline::length_to(points, i + 2);
        ASSERT_EQ(positions.length(), length);
        std::uniform_real_distribution<double> distance(-0.1 * length, 1.1 * length);
        for (int j = 0; j < 60; ++j) {
            const double at = j < 3 + i ? plain_polyline::length_to(points, j) : distance(random);
            const giPoint3 expected = plain_polyline::point_at(points, at, snap);
            giPoint3 point;
            ngkT parameter;
            positions.find(at, point, parameter);
            ASSERT_EQ(point.is_set(), expected.is_set()) << i << " " << at;
            if (expected.is_set()) {
                ASSERT_LE(point.distance(expected), 1e-12) << i << " " << at;
            }
        }
    }
}

TEST(nmkNgkArcLengthPositions, measures_nothing_without_a_curve) {
    const nmkNgkArcLengthPositions positions(ngkCurvePtr3(), 1, 1e-4);
    EXPECT_EQ(positions.length(), 0.0);
    giPoint3 point(1, 2, 3);
    ngkT parameter(0, 0.0);
    positions.find(0.0, point, parameter);
    EXPECT_FALSE(point.is_set());
    EXPECT_FALSE(parameter.is_set());
}

TEST(nmkNgkArcLengthPositions, of_a_curve_that_crosses_itself_are_on_the_strand_that_was_reached) {
    // The crossing at (5, 0) is 5 from the start, and again 35 from it, which is 20 from the end.
    const ngkCurvePtr3 curve(
        new ngkPolyline3(Points{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {5, 10, 0}, {5, -20, 0}}));
    giPoint3 point;
    ngkT parameter;
    nmkNgkArcLengthPositions(curve, 1, 1e-4).find(5.0, point, parameter);
    EXPECT_EQ(point, giPoint3(5, 0, 0));
    EXPECT_EQ(parameter.segment, 0);
    nmkNgkArcLengthPositions(curve, 1, 1e-4).find(35.0, point, parameter);
    EXPECT_EQ(point, giPoint3(5, 0, 0));
    EXPECT_EQ(parameter.segment, 3);
    nmkNgkArcLengthPositions(curve, 0, 1e-4).find(20.0, point, parameter);
    EXPECT_EQ(point, giPoint3(5, 0, 0));
    EXPECT_EQ(parameter.segment, 3);
}

namespace {

/// How often all segments are looked at, and how often a place on one of them.
struct Looks {
    int at_all = 0;
    int at_one = 0;
};

class CountingPolyline : public ngkPolyline3 {
  public:
    CountingPolyline(const Points& points, Looks& looks) : ngkPolyline3(points), m_looks(looks) {}

    void visit_pieces(nmk_ngk::PieceVisitor<3>& visitor, nmk_ngk::PieceOrder order) const override {
        ++m_looks.at_all;
        ngkPolyline3::visit_pieces(visitor, order);
    }
    nmk_ngk::Jet<3> jet_at(const ngkT& t) const override {
        ++m_looks.at_one;
        return ngkPolyline3::jet_at(t);
    }

  private:
    Looks& m_looks;
};

}  // namespace

TEST(nmkNgkArcLengthPositions, on_a_polyline_are_found_without_a_look_at_all_segments) {
    Points points;
    for (int i = 0; i < 50; ++i) points.emplace_back(i, i % 3, 7 - i % 5);
    Looks looks;
    const ngkCurvePtr3 curve(new CountingPolyline(points, looks));
    const nmkNgkArcLengthPositions positions(curve, 1, 1e-4);
    const int looks_to_measure = looks.at_all;
    for (int i = 0; i < 100; ++i) {
        giPoint3 point;
        ngkT parameter;
        positions.find(positions.length() * i / 100.0, point, parameter);
        EXPECT_TRUE(point.is_set());
    }
    EXPECT_EQ(looks.at_all, looks_to_measure);
}

TEST(nmkNgkArcLengthPositions, beyond_the_end_do_not_ask_for_the_nearest_point) {
    Looks looks;
    const ngkCurvePtr3 curve(new CountingPolyline(corner, looks));
    const nmkNgkArcLengthPositions positions(curve, 1, 1e-4);
    looks = {};
    giPoint3 point;
    ngkT parameter;
    for (const double distance : {7.001, 100.0, infinite, not_a_number})
        positions.find(distance, point, parameter);
    EXPECT_EQ(looks.at_all + looks.at_one, 0);
    positions.find(6.0, point, parameter);
    EXPECT_GT(looks.at_one, 0);
}

TEST(nmkNgkArcLengthPositions, hostile_numbers_neither_crash_nor_hang) {
    for (const double a : hostile_values) {
        for (const double b : hostile_values) {
            const nmkNgkArcLengthPositions positions(
                ngkCurvePtr3(new ngkPolyline3(Points{{a, b, 0}, {b, 1, a}, {0, a, 1}})), 0, b);
            giPoint3 point(1, 2, 3);
            ngkT parameter(4, 5.0);
            positions.find(a, point, parameter);
            EXPECT_EQ(point.is_set(), parameter.is_set());
        }
    }
}

TEST(nmkNgkArcLengthPositions, are_the_nearest_points_of_the_curve_to_those_of_its_polygon) {
    std::mt19937_64 random(47);
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    for (int i = 0; i < 20; ++i) {
        Points points;
        for (int j = 0; j < 6; ++j) points.emplace_back(coordinate(random), coordinate(random), 0);
        const ngkCurvePtr3 curve(new ngkBezCurve3(points));
        const ngkPolyline3 polygon = curve->curve_polygon(ngkPolygonizeTRP3(0.05));
        const nmkNgkArcLengthPositions positions(curve, 1, 0.05);
        for (int j = 0; j <= 50; ++j) {
            giPoint3 on_polygon;
            giUnitVec3 tangent;
            const double at = positions.length() * j / 50.0;
            nmkNgkPolylineUtils::evaluate_polyline(polygon, at, on_polygon, tangent);
            giPoint3 point;
            ngkT parameter;
            positions.find(at, point, parameter);
            const double nearest = curve->closest_point(on_polygon).distance;
            EXPECT_NEAR(point.distance(on_polygon), nearest, 1e-12 + 1e-9 * nearest);
        }
    }
}
