// curve_shapes: the curves that the arguments of `nmk curve` describe, and those that are refused.

#include <cmath>
#include <limits>
#include <numbers>
#include <ostream>

#include "app/commands/curve/curve_runner.h"

namespace nmk_curve {
namespace {

constexpr double pi = std::numbers::pi;

struct ShapeCase {
    const char* name;
    std::vector<std::string> words;
    const char* kind;
    double length;
    std::vector<double> start, end;
};

std::ostream& operator<<(std::ostream& out, const ShapeCase& each) { return out << each.name; }

class curve_shape : public testing::TestWithParam<ShapeCase> {};

void expect_near(const nlohmann::json& point, const std::vector<double>& expected) {
    ASSERT_EQ(point.size(), expected.size()) << point;
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(point[i], expected[i], 1e-9);
}

TEST_P(curve_shape, has_its_kind_length_and_ends) {
    const nlohmann::json facts = facts_of(GetParam().words);
    EXPECT_EQ(facts["kind"], GetParam().kind);
    if (std::isfinite(GetParam().length)) {
        EXPECT_NEAR(facts["length"], GetParam().length, 1e-9);
    } else {
        EXPECT_TRUE(facts["length"].is_null());
    }
    expect_near(facts["start"], GetParam().start);
    expect_near(facts["end"], GetParam().end);
}

constexpr double infinite = std::numeric_limits<double>::infinity();

const ShapeCase shapes[] = {
    {"an_arc_through_three_points", {"arc", "0,0", "1,1", "2,0"}, "arc", pi, {0, 0, 0}, {2, 0, 0}},
    {"an_arc_through_points_on_a_line",
     {"arc", "0,0", "1,0", "2,0"},
     "line",
     2,
     {0, 0, 0},
     {2, 0, 0}},
    {"an_arc_by_start_tangent",
     {"arc", "0,0", "2,0", "--start-tangent", "0,1"},
     "arc",
     pi,
     {0, 0, 0},
     {2, 0, 0}},
    {"an_arc_by_both_tangents",
     {"arc", "0,0", "2,0", "--start-tangent", "0,1", "--end-tangent", "0,-1"},
     "arc",
     pi,
     {0, 0, 0},
     {2, 0, 0}},
    {"an_arc_by_centre_and_tangent",
     {"arc", "0,0", "2,0", "--centre", "1,0", "--start-tangent", "0,-1"},
     "arc",
     pi,
     {0, 0, 0},
     {2, 0, 0}},
    {"an_arc_by_sweep",
     {"arc", "1,0", "--centre", "0,0", "--start-tangent", "0,1", "--sweep", "90"},
     "arc",
     pi / 2,
     {1, 0, 0},
     {0, 1, 0}},
    {"a_sweep_that_lacks_less_than_the_minimum_is_a_full_circle",
     {"arc", "1,0", "--centre", "0,0", "--start-tangent", "0,1", "--sweep", "359",
      "--minimum-angle", "2"},
     "circle",
     2 * pi,
     {1, 0, 0},
     {1, 0, 0}},
    {"an_arc_by_angles",
     {"arc", "--centre", "1,1", "--radius", "2", "--from-angle", "0", "--to-angle", "180"},
     "arc",
     2 * pi,
     {3, 1, 0},
     {-1, 1, 0}},
    {"a_circle_about_a_centre",
     {"circle", "1,2,3", "--radius", "2"},
     "circle",
     4 * pi,
     {3, 2, 3},
     {3, 2, 3}},
    {"a_circle_that_begins_across_its_reference",
     {"circle", "0,0", "--radius", "1", "--reference", "1,0"},
     "circle",
     2 * pi,
     {0, -1, 0},
     {0, -1, 0}},
    {"a_circle_with_a_normal",
     {"circle", "0,0", "--radius", "1", "--normal", "1,0,0"},
     "circle",
     2 * pi,
     {0, 0, -1},
     {0, 0, -1}},
    {"a_circle_through_three_points",
     {"circle", "1,0", "0,1", "-1,0"},
     "circle",
     2 * pi,
     {1, 0, 0},
     {1, 0, 0}},
    {"a_line", {"line", "1,2,3", "4,6,3"}, "line", 5, {1, 2, 3}, {4, 6, 3}},
    {"a_half_line",
     {"half-line", "1,2", "--direction", "0,5"},
     "half_line",
     infinite,
     {1, 2, 0},
     {}},
    {"an_infinite_line",
     {"infinite-line", "1,2", "--direction", "0,5"},
     "infinite_line",
     infinite,
     {},
     {}},
    {"a_point", {"point", "1,2,3"}, "point", 0, {1, 2, 3}, {1, 2, 3}},
    {"a_polyline", {"polyline", "0,0", "3,0", "3,4"}, "polyline", 7, {0, 0, 0}, {3, 4, 0}},
    {"a_polyline_of_two_points", {"polyline", "0,0", "3,4"}, "line", 5, {0, 0, 0}, {3, 4, 0}},
    {"a_polyline_of_equal_points",
     {"polyline", "1,1", "1,1", "1,1"},
     "polyline",
     0,
     {1, 1, 0},
     {1, 1, 0}},
    {"a_rectangle", {"rectangle", "1,1", "--size", "3,2"}, "polyline", 10, {1, 1, 0}, {1, 1, 0}},
    {"a_rectangle_to_the_left",
     {"rectangle", "1,1", "--size", "-3,2"},
     "polyline",
     10,
     {1, 1, 0},
     {1, 1, 0}},
    {"a_filleted_rectangle",
     {"filleted-rectangle", "0,0", "--size", "6,4", "--radius", "1"},
     "composite",
     12 + 2 * pi,
     {0, 1, 0},
     {0, 1, 0}},
    {"a_bezier_of_control_points",
     {"bezier", "0,0", "1,2", "2,0"},
     "bezier",
     2.957885715089195,
     {0, 0, 0},
     {2, 0, 0}},
    {"a_bezier_that_turns_back",
     {"bezier", "0,0", "0,1", "1,1", "1,0"},
     "bezier",
     2,
     {0, 0, 0},
     {1, 0, 0}},
    {"a_bezier_by_tangents_along_the_chord",
     {"bezier", "0,0", "3,0", "--start-tangent", "1,0", "--end-tangent", "1,0"},
     "line",
     3,
     {0, 0, 0},
     {3, 0, 0}},
    {"a_bezier_without_tangents", {"bezier", "0,0", "3,0"}, "line", 3, {0, 0, 0}, {3, 0, 0}},
    {"a_bezier_by_magnitudes",
     {"bezier", "0,0", "3,0", "--start-tangent", "1,0", "--end-tangent", "1,0", "--start-magnitude",
      "3", "--end-magnitude", "3"},
     "bezier",
     3,
     {0, 0, 0},
     {3, 0, 0}},
};

INSTANTIATE_TEST_SUITE_P(all, curve_shape, testing::ValuesIn(shapes),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(curve_bezier, chooses_the_magnitudes_as_named) {
    const auto with = [](const std::string& name) {
        return facts_of({"bezier", "0,0", "2,2", "--start-tangent", "1,0", "--end-tangent", "0,1",
                         "--magnitudes", name})["control_points"];
    };
    // A quarter of a circle of radius 2.
    EXPECT_NEAR(with("arc")[1][0], 8.0 / 3.0 * std::tan(pi / 8), 1e-12);
    EXPECT_NE(with("arc"), with("chord"));
}

TEST(curve_arc, is_tiny_for_three_equal_points) {
    const nlohmann::json facts = facts_of({"arc", "1,1", "1,1", "1,1"});
    EXPECT_EQ(facts["kind"], "arc");
    EXPECT_NEAR(facts["length"], 1e-5, 1e-7);
    EXPECT_NEAR(facts["start"][0], 1.0, 1e-4);
}

struct RefusedCase {
    const char* name;
    std::vector<std::string> words;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& each) { return out << each.name; }

class curve_refused : public testing::TestWithParam<RefusedCase> {};

TEST_P(curve_refused, prints_one_line_and_exits_with_2) {
    nmk_shell::expect_refused(curve(GetParam().words), GetParam().message);
}

const RefusedCase refused[] = {
    {"no_action", {}, "ACTION"},
    {"an_unknown_action", {"arch", "0,0"}, "arch"},
    {"no_points", {"line"}, "nmk curve line: expected two points"},
    {"too_many_points", {"line", "0,0", "1,1", "2,2"}, "nmk curve line: expected two points"},
    {"words_for_a_point", {"line", "0,0", "abc"}, "point \"abc\": expected X,Y or X,Y,Z"},
    {"four_coordinates", {"line", "0,0", "1,2,3,4"}, "point \"1,2,3,4\": expected X,Y or X,Y,Z"},
    {"nan_for_a_coordinate", {"line", "0,0", "nan,0"}, "point \"nan,0\": expected X,Y or X,Y,Z"},
    {"an_infinite_coordinate", {"point", "inf,0"}, "point \"inf,0\": expected X,Y or X,Y,Z"},
    {"a_coordinate_that_is_too_large", {"point", "1e10,0"}, "expected X,Y or X,Y,Z, numbers from"},
    {"a_line_of_equal_points", {"line", "1,1", "1,1"}, "points that are more than 1e-05 apart"},
    {"a_circle_through_equal_points", {"circle", "1,1", "1,1", "1,1"}, "not on one line"},
    {"a_circle_of_radius_0", {"circle", "1,1", "--radius", "0"}, "a radius above 0"},
    {"a_negative_radius", {"circle", "1,1", "--radius", "-1"}, "expected a number from 0 to 1e9"},
    {"a_radius_of_nan", {"circle", "1,1", "--radius", "nan"}, "expected a number from 0 to 1e9"},
    {"an_arc_without_a_tangent", {"arc", "0,0", "1,1"}, "START END with --start-tangent"},
    {"an_arc_of_four_points", {"arc", "0,0", "1,1", "2,2", "3,3"}, "expected START MIDDLE END"},
    {"an_arc_against_its_tangent",
     {"arc", "0,0", "1,0", "--start-tangent", "-1,0"},
     "ends, tangents and a centre that one arc has"},
    {"an_arc_that_misses_its_centre",
     {"arc", "0,0", "2,0", "--centre", "5,0", "--start-tangent", "0,1"},
     "ends, tangents and a centre that one arc has"},
    {"a_sweep_below_0",
     {"arc", "1,0", "--centre", "0,0", "--start-tangent", "0,1", "--sweep", "-90"},
     "an angle above 0"},
    {"a_tangent_without_length",
     {"arc", "0,0", "1,1", "--start-tangent", "0,0"},
     "expected X,Y or X,Y,Z, not all of them 0"},
    {"a_half_line_without_a_direction", {"half-line", "0,0"}, "a point, and --direction"},
    {"a_rectangle_of_no_height", {"rectangle", "0,0", "--size", "3,0"}, "longer than 1e-05"},
    {"a_rectangle_with_a_radius",
     {"rectangle", "0,0", "--size", "3,2", "--radius", "1"},
     "--radius does not apply to rectangle"},
    {"a_size_of_one_number", {"rectangle", "0,0", "--size", "3"}, "expected WIDTH,HEIGHT"},
    {"fillets_that_do_not_fit",
     {"filleted-rectangle", "0,0", "--size", "3,2", "--radius", "1.5"},
     "at least twice the radius"},
    {"a_bezier_of_27_points",
     [] {
         std::vector<std::string> words(27, "0,0");
         words.insert(words.begin(), "bezier");
         return words;
     }(),
     "expected 2 to 26 points"},
    {"a_bezier_of_equal_ends", {"bezier", "1,1", "1,1"}, "points that are more than 1e-05 apart"},
    {"control_points_with_tangents",
     {"bezier", "0,0", "1,1", "2,0", "--start-tangent", "1,0"},
     "control points without"},
    {"one_magnitude",
     {"bezier", "0,0", "1,1", "--start-magnitude", "1"},
     "both --start-magnitude and --end-magnitude"},
    {"an_option_of_another_shape",
     {"line", "0,0", "1,1", "--sweep", "3"},
     "--sweep does not apply"},
    {"an_option_of_files", {"line", "0,0", "1,1", "--curve", "3"}, "--curve does not apply"},
    {"no_samples", {"line", "0,0", "1,1", "--points", "0"}, "from 2 to 1000000"},
    {"one_sample", {"line", "0,0", "1,1", "--points", "1"}, "from 2 to 1000000"},
    {"too_many_samples", {"line", "0,0", "1,1", "--points", "1000000000"}, "from 2 to 1000000"},
    {"samples_of_a_half_line",
     {"half-line", "0,0", "--direction", "1,0", "--points", "5"},
     "expected one with ends"},
    {"a_table_of_an_infinite_line",
     {"infinite-line", "0,0", "--direction", "1,0", "--csv"},
     "expected one with ends"},
    {"a_tolerance_of_0", {"line", "0,0", "1,1", "--tolerance", "0"}, "a number above 0"},
    {"csv_and_json", {"line", "0,0", "1,1", "--csv", "--json"}, "exclude each other"},
    {"an_output_of_unknown_kind",
     {"line", "0,0", "1,1", "-o", "a.xyz"},
     "expected a name that ends"},
    {"two_outputs_of_one_name",
     {"line", "0,0", "1,1", "-o", "a.json", "--svg", "a.json"},
     "is the name of two outputs"},
    {"a_directory_that_does_not_exist",
     {"line", "0,0", "1,1", "-o", "no/such/directory/a.csv"},
     "no/such/directory/a.csv"},
};

INSTANTIATE_TEST_SUITE_P(all, curve_refused, testing::ValuesIn(refused),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace nmk_curve
