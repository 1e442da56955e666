// keep_out_reader: tables of circles, rectangles and polygons with a clearance.

#include "formats/keep_outs/keep_out_reader.h"

#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <string>

#include "app/formats/job/job_fixtures.h"

namespace nmk_keep_outs {
namespace {

const std::string good =
    "# clamps\nunits,mm\ncircle,10,20,5\nclearance,2\nrectangle,30,0,40,8.5\n\npolygon\n"
    "corner,0,50\ncorner,9,50\ncorner,9,60\nclearance,0\npolygon\ncorner,50,50\ncorner,60,50\n"
    "corner,60,60\ncorner,58,52\n";

std::vector<KeepOut> keep_outs_of(const std::string& text) {
    auto read = read_keep_outs("a.csv", text);
    if (!read) {
        ADD_FAILURE() << read.error().text();
        return {};
    }
    return *std::move(read);
}

std::string error_of(const std::string& text) {
    const auto read = read_keep_outs("a.csv", text);
    const auto* error = read ? nullptr : &read.error();
    return error == nullptr ? "" : error->text();
}

/// Whether a place is inside one of the shapes of a table, with its clearance.
bool has_inside(const std::vector<KeepOut>& keep_outs, double x, double y) {
    nmkTravelProblem problem;
    for (const KeepOut& keep_out : keep_outs) {
        problem.keep_outs.push_back(keep_out.shape);
    }
    const nmkTravelWays ways(problem);
    EXPECT_EQ(ways.error(), "");
    return ways.keep_out_at({x, y, 0.0}).has_value();
}

TEST(keep_out_reader, reads_circles_rectangles_and_polygons) {
    const std::vector<KeepOut> keep_outs = keep_outs_of(good);
    ASSERT_EQ(keep_outs.size(), 4U);
    EXPECT_EQ(keep_outs[0].line, 3U);
    EXPECT_EQ(keep_outs[1].line, 5U);
    EXPECT_EQ(keep_outs[2].line, 7U);
    EXPECT_EQ(keep_outs[3].line, 12U);
    EXPECT_EQ(keep_outs[1].bare.parts[0][2], giPoint2(40.0, 8.5));
    EXPECT_EQ(keep_outs[2].bare.parts[0].size(), 3U);
    EXPECT_TRUE(keep_outs_of("").empty());
    EXPECT_TRUE(keep_outs_of("# none\n").empty());
}

TEST(keep_out_reader, gives_each_keep_out_the_clearance_above_it) {
    const std::vector<KeepOut> keep_outs = keep_outs_of(good);
    EXPECT_TRUE(has_inside(keep_outs, 14.99, 20.0));
    EXPECT_FALSE(has_inside(keep_outs, 15.02, 20.0));
    EXPECT_TRUE(has_inside(keep_outs, 41.99, 4.0));
    EXPECT_FALSE(has_inside(keep_outs, 42.02, 4.0));
    EXPECT_TRUE(has_inside(keep_outs, 5.0, 48.01));
    EXPECT_FALSE(has_inside(keep_outs, 55.0, 49.99));
}

TEST(keep_out_reader, adds_a_margin_for_the_rounding_of_outputs) {
    const std::vector<KeepOut> keep_outs = keep_outs_of("rectangle,0,0,10,10\n");
    EXPECT_TRUE(has_inside(keep_outs, 5.0, -0.0009));
    EXPECT_FALSE(has_inside(keep_outs, 5.0, -0.0011));
}

TEST(keep_out_reader, reads_inches_and_other_separators) {
    const std::vector<KeepOut> keep_outs = keep_outs_of("units;inch\nrectangle;1;1;2;3\n");
    ASSERT_EQ(keep_outs.size(), 1U);
    EXPECT_EQ(keep_outs[0].bare.parts[0][2], giPoint2(50.8, 76.2));
}

struct BadTable {
    const char* name;
    std::string text;
    const char* expected;
};

class keep_out_reader_error : public testing::TestWithParam<BadTable> {};

TEST_P(keep_out_reader_error, names_the_line_and_the_expected_text) {
    EXPECT_EQ(error_of(GetParam().text), GetParam().expected);
}

const char* const bad_number =
    "a.csv:1: cannot read \"x\" in column 4; expected a number from -1e6 to 1e6 with a decimal "
    "point";

INSTANTIATE_TEST_SUITE_P(
    bad_tables, keep_out_reader_error,
    testing::Values(
        BadTable{"unknown_row", "circle,1,1,1\n1,2\n",
                 "a.csv:2: unknown row \"1\"; expected circle, rectangle, polygon, corner, "
                 "clearance or units"},
        BadTable{
            "binary_row", "\x02\x7f\n",
            "a.csv:1: unknown row \"\\x02\\x7f\"; expected circle, rectangle, polygon, corner, "
            "clearance or units"},
        BadTable{"circle_without_radius", "circle,1,2\n",
                 "a.csv:1: 3 columns; expected circle,X,Y,RADIUS"},
        BadTable{"radius_is_not_a_number", "circle,1,2,x\n", bad_number},
        BadTable{"radius_is_zero", "circle,1,2,0\n", "a.csv:1: expected a radius above 0"},
        BadTable{"coordinate_is_too_large", "circle,2e6,2,1\n",
                 "a.csv:1: cannot read \"2e6\" in column 2; expected a number from -1e6 to 1e6 "
                 "with a decimal point"},
        BadTable{"rectangle_is_flat", "rectangle,1,2,3,2\n",
                 "a.csv:1: expected two opposite corners that differ in x and y"},
        BadTable{"polygon_has_numbers", "polygon,1,2,3,4\n",
                 "a.csv:1: 5 columns; expected polygon alone, and its corners in rows corner,X,Y"},
        BadTable{"polygon_has_two_corners", "polygon\ncorner,1,2\ncorner,3,4\n",
                 "a.csv:1: a polygon of 2 corners; expected at least 3"},
        BadTable{"polygon_crosses_itself",
                 "polygon\ncorner,0,0\ncorner,2,2\ncorner,2,0\ncorner,0,2\n",
                 "a.csv:1: the edges of the polygon cross or touch; expected them to meet in their "
                 "common corners only"},
        BadTable{"corner_without_a_polygon", "circle,1,2,3\ncorner,1,2\n",
                 "a.csv:2: a corner without a polygon; expected a row polygon above it"},
        BadTable{"corner_has_one_number", "polygon\ncorner,1,2\ncorner,3\n",
                 "a.csv:3: 2 columns; expected corner,X,Y"},
        BadTable{"circle_has_a_column_too_many", "# a\n\ncircle,1,2,3,4\n",
                 "a.csv:3: 5 columns; expected circle,X,Y,RADIUS"},
        BadTable{"rectangle_without_a_corner", "rectangle,1,2\n",
                 "a.csv:1: 3 columns; expected rectangle,X0,Y0,X1,Y1"},
        BadTable{"rectangle_with_an_infinite_corner", "rectangle,1,2,inf,4\n",
                 "a.csv:1: cannot read \"inf\" in column 4; expected a number from -1e6 to 1e6 "
                 "with a decimal point"},
        BadTable{"corner_that_is_not_a_number", "polygon\ncorner,nan,4\n",
                 "a.csv:2: cannot read \"nan\" in column 2; expected a number from -1e6 to 1e6 "
                 "with a decimal point"},
        BadTable{"polygon_without_corners_at_the_end", "circle,1,2,3\npolygon\n",
                 "a.csv:2: a polygon of 0 corners; expected at least 3"},
        BadTable{"polygon_that_touches_itself_before_another_row",
                 "polygon\ncorner,0,0\ncorner,4,0\ncorner,4,4\ncorner,2,0\ncorner,0,4\n"
                 "circle,1,2,3\n",
                 "a.csv:1: the edges of the polygon cross or touch; expected them to meet in their "
                 "common corners only"},
        BadTable{"clearance_without_a_number", "clearance\n",
                 "a.csv:1: 1 column; expected clearance,C"},
        BadTable{"units_without_a_name", "units\n", "a.csv:1: expected units,mm or units,inch"},
        BadTable{"clearance_is_negative", "clearance,-1\n", "a.csv:1: expected a clearance from 0"},
        BadTable{"clearance_is_infinite", "clearance,inf\n",
                 "a.csv:1: cannot read \"inf\" in column 2; expected a number from -1e6 to 1e6 "
                 "with a decimal point"},
        BadTable{"units_are_unknown", "units,cm\n", "a.csv:1: expected units,mm or units,inch"},
        BadTable{"units_come_late", "circle,1,2,3\nunits,inch\n",
                 "a.csv:2: expected the units above all keep-outs and clearances"}),
    nmk_job::CaseName());

TEST(keep_out_reader, refuses_more_corners_than_can_be_searched) {
    std::string text = "clearance,1000\n";
    for (int i = 0; i < 40; ++i) {
        text += "circle,0," + std::to_string(i) + ",100000\n";
    }
    EXPECT_EQ(error_of(text),
              "a.csv:21: more than 20000 corners, with those of circles and clearances; expected "
              "fewer keep-outs");
}

TEST(keep_out_reader, refuses_the_first_corner_of_a_polygon_that_is_one_too_many) {
    std::string text = "polygon\n";
    for (int i = 0; i <= nmkTravelKeepOut::max_corners; ++i) {
        text += "corner," + std::to_string(i) + "," + std::to_string(i % 2) + "\n";
    }
    EXPECT_EQ(error_of(text),
              "a.csv:20002: more than 20000 corners, with those of circles and clearances; "
              "expected fewer keep-outs");
}

TEST(keep_out_reader, reads_every_prefix_of_a_table_within_its_bounds) {
    std::size_t read = 0;
    for (std::size_t length = 0; length <= good.size(); ++length) {
        const std::vector<char> exact(good.begin(),
                                      good.begin() + static_cast<std::ptrdiff_t>(length));
        const auto result = read_keep_outs("a.csv", std::string_view(exact.data(), length));
        read += bool(result) ? 1 : 0;
    }
    EXPECT_GE(read, 20U);
    EXPECT_LT(read, good.size());
}

}  // namespace
}  // namespace nmk_keep_outs
