// blocked_reader: lists of blocked points, and the lattice that they are on.

#include "formats/blocked/blocked_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "app/formats/job/job_fixtures.h"

namespace nmk_blocked {
namespace {

const std::string good = "x,y\nbox,-1,0,2,1\nsteps,0.5,0.25\n0.5,0.25\n# remark\n1,1\n";

BlockedList list_of(const std::string& text) {
    auto read = read_blocked_list("a.csv", text);
    if (!read) {
        ADD_FAILURE() << read.error().text();
        return {};
    }
    return *std::move(read);
}

std::string error_of(const std::string& text) {
    const auto read = read_blocked_list("a.csv", text);
    const auto* error = read ? nullptr : &read.error();
    return error == nullptr ? "" : error->text();
}

std::string plane_problem(const std::string& text, giPoint2 start) {
    const auto plane = plane_of_list(list_of(text), start);
    const auto* problem = plane ? nullptr : &plane.error().message;
    return problem == nullptr ? "" : *problem;
}

TEST(blocked_reader, reads_points_box_and_steps_in_any_order) {
    const BlockedList list = list_of(good);
    ASSERT_TRUE(list.box && list.steps);
    EXPECT_EQ(list.box->lower, giPoint2(-1.0, 0.0));
    EXPECT_EQ(list.box->upper, giPoint2(2.0, 1.0));
    EXPECT_EQ(*list.steps, giPoint2(0.5, 0.25));
    ASSERT_EQ(list.points.size(), 2U);
    EXPECT_EQ(list.points[0], giPoint2(0.5, 0.25));
    EXPECT_EQ(list_of("1;2\nsteps;3\n").points.size(), 1U);
    EXPECT_EQ(*list_of("1;2\nsteps;3\n").steps, giPoint2(3.0, 3.0));
    EXPECT_TRUE(list_of("").points.empty());
}

TEST(blocked_reader, the_lattice_goes_through_the_start_and_fills_the_box) {
    const auto made = plane_of_list(list_of(good), {0.25, 0.25});
    const auto& plane = made->plane;
    EXPECT_EQ(plane.columns(), 6);  // -0.75 to 1.75
    EXPECT_EQ(plane.rows(), 5);     // 0 to 1
    EXPECT_EQ(plane.at({0, 0}), giPoint2(-0.75, 0.0));
    EXPECT_EQ(plane.cell_at({0.25, 0.25}), (nmk_lattice::GridCell{2, 1}));
    EXPECT_EQ(made->off_lattice, 2U);
    EXPECT_EQ(plane.blocked_count(), 0U);
}

TEST(blocked_reader, a_blocked_point_is_on_the_lattice_within_a_hundred_thousandth) {
    const std::string text = "box,0,0,1,1\nsteps,0.1\n0.3,0.3\n0.300009,0.7\n0.30002,0.9\n5,5\n";
    const auto made = plane_of_list(list_of(text), {0.0, 0.0});
    const auto& plane = made->plane;
    EXPECT_EQ(plane.columns(), 11);
    EXPECT_TRUE(plane.is_blocked({3, 3}));
    EXPECT_TRUE(plane.is_blocked({3, 7}));
    EXPECT_FALSE(plane.is_blocked({3, 9}));
    EXPECT_EQ(made->off_lattice, 2U);
}

TEST(blocked_reader, sums_of_steps_are_exact_in_any_order) {
    const auto made = plane_of_list(list_of("box,0,0,100,100\nsteps,0.1,0.3\n"), {0.0, 0.0});
    const nmk_lattice::RoutePlane& plane = made->plane;
    const nmkLattice lattice = plane.search_lattice(false);
    const giPoint2 steps = plane.search_steps();
    double up = 0.0;
    for (int i = 0; i < 1000; ++i) up += steps.x;
    double back = up;
    for (int i = 0; i < 400; ++i) back -= steps.x;
    EXPECT_EQ(up, lattice.point({1000, 0}).x);
    EXPECT_EQ(back, lattice.point({600, 0}).x);
    EXPECT_EQ(plane.search_point(giPoint2(60.0, 0.3)), lattice.point({600, 1}));
    EXPECT_NEAR(steps.x, 0.1, 1e-10);
}

struct BadList {
    const char* name;
    std::string text;
    const char* expected;
};

class blocked_reader_error : public testing::TestWithParam<BadList> {};

TEST_P(blocked_reader_error, names_the_line_and_the_expected_text) {
    EXPECT_EQ(error_of(GetParam().text), GetParam().expected);
}

const char* const bad_steps =
    "a.csv:1: expected steps of one or two numbers above 0.00001 and at most 1e6: SX,SY";

INSTANTIATE_TEST_SUITE_P(
    bad_lists, blocked_reader_error,
    testing::Values(
        BadList{"a_step_is_zero", "steps,0,1\n", bad_steps},
        BadList{"a_step_is_negative", "steps,1,-1\n", bad_steps},
        BadList{"a_step_is_within_the_tolerance", "steps,0.00001\n", bad_steps},
        BadList{"there_are_three_steps", "steps,1,2,3\n", bad_steps},
        BadList{"steps_have_no_numbers", "steps\n", bad_steps},
        BadList{"a_step_is_not_a_number", "steps,nan,1\n",
                "a.csv:1: cannot read \"nan\" in column 2; expected a number from -1e6 to 1e6 with "
                "a decimal point"},
        BadList{"the_box_ends_before_it_begins_in_x", "box,10,0,0,5\n",
                "a.csv:1: the box goes from x 10 to 0; expected the lower left "
                "corner before the upper right"},
        BadList{"the_box_ends_before_it_begins_in_y", "box,0,5,10,-5\n",
                "a.csv:1: the box goes from y 5 to -5; expected the lower left "
                "corner before the upper right"},
        BadList{"the_box_has_three_numbers", "box,1,2,3\n",
                "a.csv:1: expected a box of four numbers from -1e6 to 1e6: X0,Y0,X1,Y1"},
        BadList{"the_box_is_too_large", "box,0,0,1e7,1\n",
                "a.csv:1: cannot read \"1e7\" in column 4; expected a number from -1e6 to 1e6 with "
                "a decimal point"},
        BadList{"there_are_two_boxes", "box,0,0,1,1\nbox,0,0,1,1\n",
                "a.csv:2: a second row box; expected one"},
        BadList{
            "a_point_has_three_columns", "1,2,3\n",
            "a.csv:1: 3 columns; expected a blocked point x,y or box,X0,Y0,X1,Y1 or steps,SX,SY"},
        BadList{"a_point_is_infinite", "x,y\n1,inf\n",
                "a.csv:2: cannot read \"inf\" in column 2; expected a number from -1e6 to 1e6 with "
                "a decimal point"},
        BadList{"a_cell_is_binary", "1,2\n\x02\x7f,3\n",
                "a.csv:2: cannot read \"\\x02\\x7f\" in column 1; expected a number from -1e6 to "
                "1e6 with a decimal point"}),
    nmk_job::CaseName());

TEST(blocked_reader, refuses_a_lattice_without_bounds_and_a_start_outside) {
    const std::string box = "box,0,0,10,10\n";
    EXPECT_EQ(plane_problem(box + "steps,1\n", {11.0, 0.0}),
              "the start (11, 0) is outside the box");
    EXPECT_EQ(plane_problem(box + "steps,1\n", {0.0, -2.0}),
              "the start (0, -2) is outside the box");
    EXPECT_EQ(plane_problem(box + "steps,0.0001\n", {0.0, 0.0}),
              "the box has 100001 by 100001 cells; at most 4194304 can be searched; expected "
              "larger steps or a smaller box");
}

TEST(blocked_reader, reads_every_prefix_of_a_list_within_its_bounds) {
    std::size_t read = 0;
    for (std::size_t length = 0; length <= good.size(); ++length) {
        const std::vector<char> exact(good.begin(),
                                      good.begin() + static_cast<std::ptrdiff_t>(length));
        const auto result = read_blocked_list("a.csv", std::string_view(exact.data(), length));
        read += bool(result) ? 1 : 0;
    }
    EXPECT_GE(read, 10U);
}

}  // namespace
}  // namespace nmk_blocked
