// dxf_reader: the curves of DXF files, what is left out, and files that are cut or wrong.

#include <ngk/ngkArc.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkPolyline.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <ostream>

#include "app/formats/dxf/dxf_samples.h"
#include "app/formats/job/job_fixtures.h"

namespace nmk_dxf {
namespace {

constexpr double pi = std::numbers::pi;
constexpr double rounding = 1e-9;

giPoint3 at(const ngkCurvePtr3& curve, double fraction) {
    giPoint3 point;
    if (curve) curve->evaluate(fraction, point);
    return point;
}

void expect_near(const giPoint3& point, const giPoint3& expected) {
    EXPECT_LE(point.distance(expected), rounding) << point.x << " " << point.y << " " << point.z;
}

TEST(read_dxf, reads_the_ends_of_a_line_to_the_bit) {
    const ngkCurvePtr3 line = curve_of("0 LINE|8 A|10 0.1|20 -2|30 1e-3|11 4|21 5.5|31 6");
    EXPECT_EQ(at(line, 0.0), giPoint3(0.1, -2.0, 1e-3));
    EXPECT_EQ(at(line, 1.0), giPoint3(4.0, 5.5, 6.0));
}

TEST(read_dxf, multiplies_by_the_unit_of_the_header) {
    EXPECT_EQ(at(curve_of("0 LINE|10 0|20 0|11 1|21 2", 1), 1.0), giPoint3(25.4, 50.8, 0.0));
    EXPECT_EQ(at(curve_of("0 LINE|10 0|20 0|11 1|21 2", 6), 1.0), giPoint3(1000.0, 2000.0, 0.0));
}

TEST(read_dxf, knows_the_survey_foot_and_the_largest_units) {
    const auto length_in = [](int units) {
        return curve_of("0 LINE|10 0|20 0|11 3937|21 0", units)->length();
    };
    EXPECT_NEAR(length_in(21), 1200e3, 1e-9);
    EXPECT_NEAR(length_in(22), 100e3, 1e-9);
    EXPECT_NEAR(length_in(23), 3600e3, 1e-9);
    EXPECT_NEAR(length_in(24), 1200e3 * 5280, 1e-5);
    EXPECT_EQ(length_in(17), 3937e12);
    EXPECT_EQ(length_in(20), 3937 * 30856775814913673e3);
    EXPECT_NE(problem_of(drawing_of("0 LINE|10 0|20 0|11 1|21 0", 25)), "");
}

TEST(read_dxf, takes_the_unit_of_the_caller_where_the_file_states_none) {
    const std::string entity = "0 LINE|10 0|20 0|11 1|21 0";
    const auto unitless = read(drawing_of(entity, 0), 25.4);
    EXPECT_FALSE(unitless->states_unit);
    EXPECT_EQ(at(unitless->curves.at(0).curve, 1.0).x, 25.4);
    const auto stated = read(drawing_of(entity, 4), 25.4);
    EXPECT_TRUE(stated->states_unit);
    EXPECT_EQ(at(stated->curves.at(0).curve, 1.0).x, 1.0);
}

TEST(read_dxf, reads_a_circle_that_begins_at_its_right) {
    const ngkCurvePtr3 circle = curve_of("0 CIRCLE|10 3|20 4|30 5|40 2");
    EXPECT_NEAR(circle->length(), 4 * pi, rounding);
    expect_near(at(circle, 0.0), {5.0, 4.0, 5.0});
    expect_near(at(circle, 0.25), {3.0, 6.0, 5.0});
}

TEST(read_dxf, reads_an_arc_counter_clockwise_over_0_degrees) {
    const ngkCurvePtr3 arc = curve_of("0 ARC|10 0|20 0|40 2|50 270|51 90");
    EXPECT_NEAR(arc->length(), 2 * pi, rounding);
    expect_near(at(arc, 0.0), {0.0, -2.0, 0.0});
    expect_near(at(arc, 0.5), {2.0, 0.0, 0.0});
    expect_near(at(arc, 1.0), {0.0, 2.0, 0.0});
}

TEST(read_dxf, mirrors_an_arc_whose_plane_is_seen_from_below) {
    const ngkCurvePtr3 arc = curve_of("0 ARC|10 10|20 0|40 2|50 0|51 90|210 0|220 0|230 -1");
    expect_near(at(arc, 0.0), {-12.0, 0.0, 0.0});
    expect_near(at(arc, 1.0), {-10.0, 2.0, 0.0});
}

TEST(read_dxf, chooses_the_axes_of_a_slanted_plane_by_the_rule_of_the_format) {
    // N = X: its X axis is Z x N = Y, and its Y axis Z.
    const ngkCurvePtr3 far = curve_of("0 ARC|10 1|20 2|30 3|40 2|50 0|51 90|210 1|220 0|230 0");
    expect_near(at(far, 0.0), {3.0, 3.0, 2.0});
    expect_near(at(far, 1.0), {3.0, 1.0, 4.0});
    // Within 1/64 of Z in x and y the X axis is Y x N, which has no part along Y.
    const ngkCurvePtr3 near = curve_of("0 CIRCLE|10 0|20 0|40 1|210 0.015|220 0.015|230 1");
    EXPECT_NEAR(at(near, 0.0).y, 0.0, rounding);
    const ngkCurvePtr3 beyond = curve_of("0 CIRCLE|10 0|20 0|40 1|210 0.016|220 0.016|230 1");
    EXPECT_NEAR(at(beyond, 0.0).z, 0.0, rounding);
}

TEST(read_dxf, makes_a_polyline_of_a_light_polyline_without_bulges) {
    const ngkCurvePtr3 curve = curve_of("0 LWPOLYLINE|70 0|38 7|10 0|20 0|10 3|20 0|10 3|20 4");
    const auto* const polyline = dynamic_cast<const ngkPolyline3*>(curve.get());
    ASSERT_NE(polyline, nullptr);
    ASSERT_EQ(polyline->point_count(), 3);
    EXPECT_EQ(polyline->point(2), giPoint3(3.0, 4.0, 7.0));
}

TEST(read_dxf, closes_a_polyline_with_its_closed_flag) {
    const ngkCurvePtr3 curve = curve_of("0 LWPOLYLINE|70 1|10 0|20 0|10 3|20 0|10 3|20 4");
    EXPECT_NEAR(curve->length(), 12.0, rounding);
    EXPECT_EQ(at(curve, 1.0), giPoint3(0.0, 0.0, 0.0));
}

TEST(read_dxf, turns_a_bulge_above_0_to_the_left) {
    const ngkCurvePtr3 curve = curve_of("0 LWPOLYLINE|10 0|20 0|42 1|10 2|20 0|10 2|20 5");
    const auto* const composite = dynamic_cast<const ngkCompCurve3*>(curve.get());
    ASSERT_NE(composite, nullptr);
    ASSERT_EQ(composite->curve_count(), 2);
    expect_near(at(composite->curve(0), 0.5), {1.0, -1.0, 0.0});
    EXPECT_NEAR(curve->length(), pi + 5.0, rounding);
    expect_near(at(curve_of("0 LWPOLYLINE|10 0|20 0|42 -1|10 2|20 0"), 0.5), {1.0, 1.0, 0.0});
}

TEST(read_dxf, takes_the_bulge_of_the_last_vertex_for_the_closing_arc) {
    const ngkCurvePtr3 curve = curve_of("0 LWPOLYLINE|70 1|10 0|20 0|42 1|10 2|20 0|42 1");
    EXPECT_NEAR(curve->length(), 2 * pi, rounding);
    expect_near(at(curve, 0.75), {1.0, 1.0, 0.0});
}

TEST(read_dxf, bends_by_four_times_the_arctangent_of_the_bulge) {
    const ngkCurvePtr3 curve = curve_of("0 LWPOLYLINE|10 0|20 0|42 0.41421356237309503|10 1|20 1");
    EXPECT_NEAR(curve->length(), pi / 2, rounding);
    const ngkCurvePtr3 nearly_full = curve_of("0 LWPOLYLINE|10 0|20 0|42 10|10 1|20 0");
    const double angle = 4 * std::atan(10.0);
    EXPECT_NEAR(nearly_full->length(), angle / (2 * std::sin(angle / 2)), 1e-6);
}

TEST(read_dxf, makes_a_line_of_a_bulge_too_small_to_be_seen) {
    const ngkCurvePtr3 curve = curve_of("0 LWPOLYLINE|10 0|20 0|42 1e-14|10 1|20 0");
    EXPECT_EQ(curve->length(), 1.0);
}

TEST(read_dxf, leaves_out_segments_without_length_and_keeps_the_bulge_behind_them) {
    const ngkCurvePtr3 curve =
        curve_of("0 LWPOLYLINE|10 0|20 0|10 0|20 0|42 1|10 2|20 0|10 2|20 0");
    EXPECT_NEAR(curve->length(), pi, rounding);
}

TEST(read_dxf, reads_a_polyline_with_its_vertices) {
    const ngkCurvePtr3 flat = curve_of(
        "0 POLYLINE|70 1|30 2|0 VERTEX|10 0|20 0|42 1|0 VERTEX|10 2|20 0|42 1|0 SEQEND|8 A");
    EXPECT_NEAR(flat->length(), 2 * pi, rounding);
    EXPECT_NEAR(at(flat, 0.3).z, 2.0, rounding);
    const ngkCurvePtr3 in_space =
        curve_of("0 POLYLINE|70 8|0 VERTEX|10 0|20 0|30 1|0 VERTEX|10 0|20 0|30 9|0 SEQEND");
    EXPECT_EQ(at(in_space, 1.0), giPoint3(0.0, 0.0, 9.0));
}

TEST(read_dxf, skips_the_frame_of_a_polyline_that_was_made_from_a_spline) {
    const ngkCurvePtr3 curve = curve_of(
        "0 POLYLINE|70 4|0 VERTEX|10 5|20 5|70 16|0 VERTEX|10 0|20 0|70 8|0 VERTEX|10 3|20 4|70 8"
        "|0 SEQEND");
    EXPECT_NEAR(curve->length(), 5.0, rounding);
}

constexpr const char* quarter_of_a_circle =
    "0 SPLINE|70 4|71 2|72 6|73 3|40 0|40 0|40 0|40 1|40 1|40 1|41 1|41 0.70710678118654757|41 1"
    "|10 1|20 0|30 0|10 1|20 1|30 0|10 0|20 1|30 0";

TEST(read_dxf, reads_the_weights_of_a_rational_spline) {
    const ngkCurvePtr3 arc = curve_of(quarter_of_a_circle);
    EXPECT_NEAR(arc->length(), pi / 2, rounding);
    EXPECT_NEAR(at(arc, 0.3).distance({0.0, 0.0, 0.0}), 1.0, rounding);
}

TEST(read_dxf, reads_a_spline_with_closed_and_periodic_flags_as_its_knots_say) {
    const ngkCurvePtr3 curve = curve_of(
        "0 SPLINE|70 3|71 2|40 -2|40 -1|40 0|40 1|40 2|40 3|40 4|40 5|40 6|10 0|20 0|10 1|20 0|10 1"
        "|20 1|10 0|20 1|10 0|20 0|10 1|20 0");
    ASSERT_TRUE(curve);
    expect_near(at(curve, 0.0), at(curve, 1.0));
    expect_near(at(curve, 0.0), {0.5, 0.0, 0.0});
}

struct LeftOutCase {
    const char* name;
    const char* entity;
    const char* left_out;
};

std::ostream& operator<<(std::ostream& out, const LeftOutCase& each) { return out << each.name; }

class read_dxf_left_out : public testing::TestWithParam<LeftOutCase> {};

TEST_P(read_dxf_left_out, is_counted_by_its_kind_and_reason) {
    const auto drawing = read(drawing_of(GetParam().entity));
    ASSERT_TRUE(drawing) << drawing.error().text();
    EXPECT_TRUE(drawing->curves.empty());
    ASSERT_EQ(drawing->left_out.size(), 1U);
    EXPECT_EQ(drawing->left_out.begin()->first, GetParam().left_out);
}

const LeftOutCase left_out[] = {
    {"an_entity_of_another_kind", "0 TEXT|1 words", "TEXT"},
    {"a_line_between_equal_points", "0 LINE|10 1|20 1|11 1|21 1", "LINE without length"},
    {"a_circle_of_radius_0", "0 CIRCLE|10 1|20 1|40 0", "CIRCLE without length"},
    {"an_arc_of_radius_0", "0 ARC|10 1|20 1|40 0|50 0|51 1", "ARC without length"},
    {"a_polyline_of_one_vertex", "0 LWPOLYLINE|10 1|20 1", "LWPOLYLINE without length"},
    {"a_polyline_of_equal_vertices", "0 LWPOLYLINE|10 1|20 1|10 1|20 1|10 1|20 1",
     "LWPOLYLINE without length"},
    {"a_mesh", "0 POLYLINE|70 16|0 VERTEX|10 0|20 0|0 VERTEX|10 1|20 0|0 SEQEND",
     "POLYLINE that is a mesh"},
    {"a_spline_of_fit_points", "0 SPLINE|70 8|71 3|74 2|11 0|21 0|11 1|21 1",
     "SPLINE without control points"},
    {"an_entity_of_the_paper", "0 LINE|67 1|10 0|20 0|11 1|21 1", "LINE of the paper"},
};

INSTANTIATE_TEST_SUITE_P(all, read_dxf_left_out, testing::ValuesIn(left_out),
                         [](const auto& each) { return std::string(each.param.name); });

struct ProblemCase {
    const char* name;
    std::string text;
    const char* problem;
};

std::ostream& operator<<(std::ostream& out, const ProblemCase& each) { return out << each.name; }

class read_dxf_refused : public testing::TestWithParam<ProblemCase> {};

TEST_P(read_dxf_refused, names_the_line_and_what_was_expected) {
    EXPECT_EQ(problem_of(GetParam().text), std::string("a.dxf:") + GetParam().problem);
}

const ProblemCase refused[] = {
    {"an_empty_file", "", " the file ends without EOF; expected a whole DXF file"},
    {"words_for_a_code", "0\nSECTION\nabc\nd\n",
     "3: cannot read \"abc\"; expected the code of a group"},
    {"a_code_that_is_too_large", "1072\nx\n",
     "1: cannot read \"1072\"; expected the code of a group"},
    {"a_code_without_a_value", "0\nSECTION\n2\n",
     "3: the file ends behind the code of a group; expected its value"},
    {"a_file_without_its_end", groups("0 SECTION|2 ENTITIES|0 ENDSEC"),
     "6: the file ends without EOF; expected a whole DXF file"},
    {"an_end_inside_a_section", groups("0 SECTION|2 ENTITIES|0 EOF"),
     "6: EOF inside a section; expected ENDSEC"},
    {"an_end_inside_a_section_that_is_skipped", groups("0 SECTION|2 BLOCKS|0 EOF"),
     "6: EOF inside a section; expected ENDSEC"},
    {"something_beside_the_sections", groups("0 LINE|0 EOF"),
     "2: group 0 \"LINE\"; expected SECTION or EOF"},
    {"a_section_without_a_name", groups("0 SECTION|0 EOF"),
     "4: group 0 \"EOF\"; expected group 2 with the name of a section"},
    {"a_group_before_the_first_entity", groups("0 SECTION|2 ENTITIES|8 A|0 ENDSEC|0 EOF"),
     "6: group 8 \"A\"; expected group 0 with an entity"},
    {"an_unknown_unit", drawing_of("0 LINE|10 0|20 0|11 1|21 1", 99), "8: unknown unit \"99\""},
    {"a_coordinate_that_is_not_a_number", drawing_of("0 LINE|10 x|20 0|11 1|21 1"),
     "18: cannot read \"x\" of group 10; expected a number from -1e9 to 1e9"},
    {"a_coordinate_of_nan", drawing_of("0 LINE|10 nan|20 0|11 1|21 1"),
     "18: cannot read \"nan\" of group 10; expected a number from -1e9 to 1e9"},
    {"a_coordinate_beyond_every_machine", drawing_of("0 LINE|10 1e10|20 0|11 1|21 1"),
     "18: cannot read \"1e10\" of group 10; expected a number from -1e9 to 1e9"},
    {"a_line_without_its_end", drawing_of("0 LINE|10 1|20 0"),
     "16: LINE without group 11; expected a number there"},
    {"a_negative_radius", drawing_of("0 CIRCLE|10 1|20 0|40 -1"),
     "16: the radius is negative; expected a number from 0 up"},
    {"an_extrusion_of_no_length", drawing_of("0 CIRCLE|10 1|20 0|40 1|210 0|220 0|230 0"),
     "16: CIRCLE: the extrusion direction has no length"},
    {"a_y_before_the_first_vertex", drawing_of("0 LWPOLYLINE|20 1|10 0"),
     "18: expected the x of a vertex, group 10, first"},
    {"a_bulge_beside_which_the_chord_has_no_length",
     drawing_of("0 LWPOLYLINE|10 0|20 0|42 1e9|10 1|20 0"),
     "16: the bulge 1e+09 of a vertex makes no arc"},
    {"a_polyline_without_its_end", drawing_of("0 POLYLINE|70 0|0 VERTEX|10 0|20 0|0 LINE"),
     "26: group 0 \"LINE\"; expected VERTEX or SEQEND, since a POLYLINE is not complete"},
    {"a_flag_that_is_not_a_whole_number", drawing_of("0 LWPOLYLINE|70 1.5|10 0|20 0|10 1|20 0"),
     "18: cannot read \"1.5\" of group 70; expected a whole number"},
    {"a_flag_beyond_an_int", drawing_of("0 LWPOLYLINE|70 99999999999|10 0|20 0|10 1|20 0"),
     "18: cannot read \"99999999999\" of group 70; expected a whole number"},
    {"a_spline_that_lacks_knots", drawing_of("0 SPLINE|71 1|40 0|40 1|10 0|20 0|10 1|20 0"),
     "16: SPLINE with 2 control points of degree 1 and 2 knots; expected 4"},
    {"a_spline_that_lacks_weights",
     drawing_of("0 SPLINE|71 1|40 0|40 0|40 1|40 1|41 1|10 0|20 0|10 1|20 0"),
     "16: SPLINE with 2 control points and 1 weight; expected one for each point, or none"},
    {"a_spline_of_degree_26", drawing_of("0 SPLINE|71 26|10 0|20 0"),
     "16: SPLINE of degree 26; expected one from 1 to 25"},
    {"a_spline_with_descending_knots",
     drawing_of("0 SPLINE|71 1|40 0|40 1|40 0|40 1|10 0|20 0|10 1|20 0"),
     "16: SPLINE with knots or weights that cannot be used; expected knots that do not descend, "
     "each inner one at most as often as the degree, and weights from 1e-10 to 1e10"},
};

INSTANTIATE_TEST_SUITE_P(all, read_dxf_refused, testing::ValuesIn(refused),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(read_dxf, reads_any_line_ending_blanks_and_remarks) {
    const std::string text = groups(
        "999 a remark|0 SECTION|2 ENTITIES|0 LINE|10 0|20 0|11 1|21 0"
        "|999 another|0 ENDSEC|0 EOF");
    std::string windows;
    for (const char c : text) windows += c == '\n' ? std::string(" \r\n  ") : std::string(1, c);
    EXPECT_EQ(read(text)->curves.size(), 1U);
    EXPECT_EQ(read("  " + windows)->curves.size(), 1U);
}

TEST(read_dxf, knows_the_line_at_which_each_entity_begins) {
    const auto drawing = read(drawing_of("0 LINE|10 0|20 0|11 1|21 0|0 CIRCLE|10 0|20 0|40 1"));
    EXPECT_EQ(drawing->curves.at(0).line, 16U);
    EXPECT_EQ(drawing->curves.at(1).line, 26U);
    EXPECT_EQ(drawing->curves.at(1).entity, "CIRCLE");
}

TEST(read_dxf, refuses_every_prefix_of_the_sample) {
    const std::string text = nmk_job::bytes_of_file(NMK_SOURCE_DIR "/samples/bracket.dxf");
    const std::size_t last_letter = text.rfind('F');
    ASSERT_GT(last_letter, 1000U);
    for (std::size_t size = 0; size <= last_letter; ++size) {
        const std::unique_ptr<char[]> exact(new char[std::max<std::size_t>(size, 1)]);
        std::copy_n(text.data(), size, exact.get());
        const auto cut = read_dxf("a.dxf", {exact.get(), size}, 1.0);
        EXPECT_FALSE(cut) << size;
    }
    EXPECT_EQ(read(text.substr(0, last_letter + 1))->curves.size(), 9U);
}

TEST(read_dxf, refuses_more_curves_than_memory_should_hold) {
    const std::string line = "0\nLINE\n10\n0\n20\n0\n11\n1\n21\n1\n";
    std::string text = groups("0 SECTION|2 ENTITIES");
    for (std::size_t i = 0; i < max_curves; ++i) text += line;
    const std::string end = groups("0 ENDSEC|0 EOF");
    EXPECT_EQ(read(text + end)->curves.size(), max_curves);
    EXPECT_TRUE(problem_of(text + line + end).ends_with(": more than 250000 curves"));
}

TEST(read_dxf, refuses_more_arcs_of_a_polyline_than_memory_should_hold) {
    std::string text = groups("0 SECTION|2 ENTITIES|0 LWPOLYLINE");
    for (int i = 0; i <= 250000; ++i) {
        text += "10\n" + std::to_string(i) + "\n20\n0\n42\n1\n";
    }
    EXPECT_TRUE(problem_of(text + groups("0 ENDSEC|0 EOF"))
                    .ends_with("a polyline with bulges has more than 250000 vertices"));
}

TEST(read_dxf, refuses_a_spline_of_more_points_than_memory_should_hold) {
    std::string text = groups("0 SECTION|2 ENTITIES|0 SPLINE|71 25");
    for (int i = 0; i < 200000; ++i) text += "10\n1\n20\n0\n";
    EXPECT_TRUE(problem_of(text + groups("0 ENDSEC|0 EOF"))
                    .ends_with("SPLINE with 200000 control points of degree 25; expected fewer"));
}

TEST(looks_like_dxf, wants_a_first_line_with_a_whole_number_alone) {
    EXPECT_TRUE(looks_like_dxf("  0\r\nSECTION\r\n"));
    EXPECT_TRUE(looks_like_dxf("999\nremark\n"));
    EXPECT_FALSE(looks_like_dxf(""));
    EXPECT_FALSE(looks_like_dxf("\n"));
    EXPECT_FALSE(looks_like_dxf("1,2\n3,4\n"));
    EXPECT_FALSE(looks_like_dxf("x,y\n"));
}

}  // namespace
}  // namespace nmk_dxf
