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

TEST(map_reader, reads_ground_and_swamp_as_free_and_other_letters_as_blocked) {
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

TEST(map_reader, accepts_any_line_ending_and_the_sizes_in_either_order) {
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

class map_reader_error : public testing::TestWithParam<BadMap> {};

TEST_P(map_reader_error, names_the_line_and_the_expected_text) {
    EXPECT_EQ(error_of(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    bad_maps, map_reader_error,
    testing::Values(
        BadMap{"the_file_is_empty", "", "a.map: the file ends early; expected \"type octile\""},
        BadMap{"the_type_is_another_one", "type tile\nheight 1\n",
               "a.map:1: cannot read \"type tile\"; expected \"type octile\""},
        BadMap{"the_width_is_missing", "type octile\nheight 1\nmap\n.\n",
               "a.map:3: width is missing; expected it before map"},
        BadMap{"the_height_is_missing", "type octile\nwidth 1\nmap\n.\n",
               "a.map:3: height is missing; expected it before map"},
        BadMap{"there_are_two_heights", "type octile\nheight 1\nheight 1\n",
               "a.map:3: a second height; expected one"},
        BadMap{"the_height_is_zero", "type octile\nheight 0\n",
               "a.map:2: height \"0\"; expected a whole number from 1 up"},
        BadMap{"the_width_is_negative", "type octile\nwidth -3\n",
               "a.map:2: width \"-3\"; expected a whole number from 1 up"},
        BadMap{"the_height_is_not_a_number", "type octile\nheight nan\n",
               "a.map:2: height \"nan\"; expected a whole number from 1 up"},
        BadMap{"the_height_is_out_of_range", "type octile\nheight 99999999999999999999\n",
               "a.map:2: height \"99999999999999999999\"; at most 4194304 cells can be searched"},
        BadMap{"the_map_has_too_many_cells", "type octile\nheight 65536\nwidth 65536\nmap\n.\n",
               "a.map:4: 65536 by 65536 cells; at most 4194304 cells can be searched"},
        BadMap{"the_map_has_no_letters", "type octile\nheight 2000\nwidth 2000\nmap\n.\n",
               "a.map:4: the file ends early; expected 2000 rows of 2000 letters"},
        BadMap{"a_word_is_unknown", "type octile\ndepth 3\n",
               "a.map:2: cannot read \"depth 3\"; expected height, width or map"},
        BadMap{"a_letter_is_unknown", head + ".@G\nS?O\n",
               "a.map:6: unknown letter \"?\" in column 2; expected one of . G S @ O T W"},
        BadMap{"a_letter_is_binary", head + ".@G\nS\x01O\n",
               "a.map:6: unknown letter \"\\x01\" in column 2; expected one of . G S @ O T W"},
        BadMap{"a_row_is_short", head + ".@\nSTOO\n",
               "a.map:5: 2 letters; expected the width of 3"},
        BadMap{"a_row_is_long", head + ".@G\nSTOO\n",
               "a.map:6: 4 letters; expected the width of 3"},
        BadMap{"a_row_is_empty", head + ".@G\n\n", "a.map:6: 0 letters; expected the width of 3"},
        BadMap{"the_file_is_truncated", head + ".@G\n",
               "a.map:5: the file ends early; expected row 2 of 2"},
        BadMap{"there_is_another_row", good + "...\n",
               "a.map:7: another row; expected the height of 2"}),
    nmk_job::CaseName());

TEST(map_reader, reads_every_prefix_of_a_map_within_its_bounds) {
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
