// map_reader: maps in the octile text format, good ones and bad ones.

#include "formats/octile/map_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "app/formats/job/job_fixtures.h"

namespace nmk_octile {
namespace {

const std::string head = "type octile\nheight 2\nwidth 3\nmap\n";
const std::string good = head + ".@G\nSTO\n";

nmk_lattice::RoutePlane plane_of(const std::string& text) {
    auto read = read_octile_map("a.map", text);
    if (!read) {
        ADD_FAILURE() << read.error().text();
        return nmk_lattice::RoutePlane({0, 0}, {0, 0}, {1, 1}, 1, 1);
    }
    return *std::move(read);
}

std::string error_of(const std::string& text) {
    const auto read = read_octile_map("a.map", text);
    const auto* error = read ? nullptr : &read.error();
    return error == nullptr ? "" : error->text();
}

TEST(map_reader, tells_ground_and_swamp_from_what_blocks) {
    const nmk_lattice::RoutePlane plane = plane_of(good);
    EXPECT_EQ(plane.columns(), 3);
    EXPECT_EQ(plane.rows(), 2);
    EXPECT_FALSE(plane.is_blocked({0, 0}));
    EXPECT_TRUE(plane.is_blocked({1, 0}));
    EXPECT_FALSE(plane.is_blocked({2, 0}));
    EXPECT_FALSE(plane.is_blocked({0, 1}));
    EXPECT_TRUE(plane.is_blocked({1, 1}));
    EXPECT_TRUE(plane.is_blocked({2, 1}));
    EXPECT_EQ(plane.blocked_count(), 3U);
    EXPECT_TRUE(plane_of("type octile\nheight 1\nwidth 1\nmap\nW").is_blocked({0, 0}));
}

TEST(map_reader, counts_x_from_the_left_and_y_from_the_top) {
    const nmk_lattice::RoutePlane plane = plane_of(good);
    EXPECT_EQ(plane.at({2, 1}), giPoint2(2.0, 1.0));
    EXPECT_EQ(plane.cell_at({2.0, 1.0}), (nmk_lattice::GridCell{2, 1}));
    EXPECT_EQ(plane.cell_at({2.5, 1.0}), std::nullopt);
    EXPECT_EQ(plane.cell_at({3.0, 1.0}), std::nullopt);
    EXPECT_EQ(plane.cell_at({-1.0, 0.0}), std::nullopt);
    EXPECT_EQ(plane.cell_at({1e300, 0.0}), std::nullopt);
}

TEST(map_reader, takes_any_line_ending_and_the_sizes_in_either_order) {
    for (const std::string text : {"type octile\r\nheight 1\r\nwidth 2\r\nmap\r\n.T\r\n",
                                   "type octile\rwidth 2\rheight 1\rmap\r.T",
                                   "\xef\xbb\xbftype octile\r\nheight 1\r\nwidth 2\r\nmap\r\n.T",
                                   "type octile\nwidth 2\nheight 1\nmap\n.T\n\n  \n"}) {
        EXPECT_EQ(plane_of(text).blocked_count(), 1U) << text;
    }
}

struct BadMap {
    const char* name;
    std::string text;
    const char* expected;
};

class map_reader_refuses : public testing::TestWithParam<BadMap> {};

TEST_P(map_reader_refuses, with_the_line_and_what_was_expected) {
    EXPECT_EQ(error_of(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    bad_maps, map_reader_refuses,
    testing::Values(
        BadMap{"nothing", "", "a.map: the file ends early; expected \"type octile\""},
        BadMap{"another_type", "type tile\nheight 1\n",
               "a.map:1: cannot read \"type tile\"; expected \"type octile\""},
        BadMap{"no_width", "type octile\nheight 1\nmap\n.\n", "a.map:3: no width before the map"},
        BadMap{"no_height", "type octile\nwidth 1\nmap\n.\n", "a.map:3: no height before the map"},
        BadMap{"two_heights", "type octile\nheight 1\nheight 1\n", "a.map:3: a second height"},
        BadMap{"height_of_zero", "type octile\nheight 0\n",
               "a.map:2: height \"0\"; expected a whole number from 1 up"},
        BadMap{"negative_width", "type octile\nwidth -3\n",
               "a.map:2: width \"-3\"; expected a whole number from 1 up"},
        BadMap{"height_that_is_no_number", "type octile\nheight nan\n",
               "a.map:2: height \"nan\"; expected a whole number from 1 up"},
        BadMap{"height_past_all_bounds", "type octile\nheight 99999999999999999999\n",
               "a.map:2: height \"99999999999999999999\"; at most 4194304 places can be searched"},
        BadMap{"hostile_sizes", "type octile\nheight 65536\nwidth 65536\nmap\n.\n",
               "a.map:4: 65536 by 65536; at most 4194304 places can be searched"},
        BadMap{"sizes_without_letters", "type octile\nheight 2000\nwidth 2000\nmap\n.\n",
               "a.map:4: the file ends early; expected 2000 rows of 2000 letters"},
        BadMap{"unknown_word", "type octile\ndepth 3\n",
               "a.map:2: cannot read \"depth 3\"; expected height, width or map"},
        BadMap{"unknown_letter", head + ".@G\nS?O\n",
               "a.map:6: unknown letter \"?\" in column 2; expected one of . G S @ O T W"},
        BadMap{"binary_letter", head + ".@G\nS\x01O\n",
               "a.map:6: unknown letter \"\\x01\" in column 2; expected one of . G S @ O T W"},
        BadMap{"short_row", head + ".@\nSTOO\n", "a.map:5: 2 letters; expected the width of 3"},
        BadMap{"long_row", head + ".@G\nSTOO\n", "a.map:6: 4 letters; expected the width of 3"},
        BadMap{"missing_row", head + ".@G\n\n", "a.map:6: 0 letters; expected the width of 3"},
        BadMap{"truncated", head + ".@G\n", "a.map:5: the file ends early; expected row 2 of 2"},
        BadMap{"further_row", good + "...\n", "a.map:7: more rows than the height of 2"}),
    nmk_job::CaseName());

TEST(map_reader, reads_every_prefix_of_a_map_without_a_look_past_its_end) {
    const std::string text = good + "\n";
    std::size_t read = 0;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::vector<char> exact(text.begin(),
                                      text.begin() + static_cast<std::ptrdiff_t>(length));
        const auto result = read_octile_map("a.map", std::string_view(exact.data(), length));
        read += bool(result) ? 1 : 0;
    }
    EXPECT_EQ(read, 3U);  // with and without the last line feeds
}

}  // namespace
}  // namespace nmk_octile
