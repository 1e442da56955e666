#include <gtest/gtest.h>
#include <nmktoolbox/trifile/TriangleFileFlue.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>

#include <memory>
#include <ostream>
#include <string>
#include <tuple>

#include "comma_locale.h"
#include "flue_samples.h"
#include "model_samples.h"
#include "trifile/percent_recorder.h"

using flue_samples::Block;
using model_samples::MemoryFile;

namespace {

// Makes the count of triangles visible.
class Flue : public TriangleFileFlue {
  public:
    explicit Flue(const std::string& text, int with_normals = 1) : TriangleFileFlue(with_normals) {
        header = read_init(utPtrClaimed, new MemoryFile(text));
    }

    std::int32_t triangle_count() const { return m_triangle_count; }

    int header;
};

std::string text_of(const std::vector<std::string>& lines) { return flue_samples::joined(lines); }

int first_status(const std::string& text) {
    Flue flue(text);
    giTriBlock block;
    return flue.get_block(block);
}

// What get_block gives until the status is not 0.
int read_all(TriangleFile& file, giTriBlock& block) {
    int status = 0;
    while (status == 0) status = file.get_block(block);
    return status;
}

// A text with one line of a block replaced, by its number in the block.
std::string with_line(Block block, std::size_t number, const std::string& line) {
    std::vector<std::string> lines = flue_samples::lines_of(block);
    lines.at(number) = line;
    return flue_samples::header(1) + text_of(lines);
}

// A text that ends before a line of its only block.
std::string cut_before(std::size_t number) {
    std::vector<std::string> lines = flue_samples::lines_of(Block());
    lines.resize(number);
    return flue_samples::header(1) + text_of(lines);
}

constexpr std::size_t counts_line = 3;
constexpr std::size_t first_node_line = 12;
constexpr std::size_t triangle_line = 18;

struct StatusCase {
    const char* name;
    std::string text;
    int status;
};

std::ostream& operator<<(std::ostream& out, const StatusCase& each) { return out << each.name; }

class TriangleFileFlue_status : public testing::TestWithParam<StatusCase> {};

struct HeaderCase {
    const char* name;
    std::string text;
    int header;
};

std::ostream& operator<<(std::ostream& out, const HeaderCase& each) { return out << each.name; }

class TriangleFileFlue_header : public testing::TestWithParam<HeaderCase> {};

}  // namespace

TEST_P(TriangleFileFlue_header, is_read) {
    EXPECT_EQ(Flue(GetParam().text).header, GetParam().header);
}

INSTANTIATE_TEST_SUITE_P(
    texts, TriangleFileFlue_header,
    testing::Values(HeaderCase{"with_the_mark_in_the_second_column", "x*\n1\nindex\n", 0},
                    HeaderCase{"with_the_mark_in_the_first_column_only", "* \n1\nindex\n", 1},
                    HeaderCase{"with_the_mark_in_both_columns", "**\n1\nindex\n", 0},
                    HeaderCase{"without_a_count", "x*\none\nindex\n", 1},
                    HeaderCase{"that_ends_behind_the_mark", "x*\n", 1},
                    HeaderCase{"that_ends_before_the_index", "x*\n1\n", 1},
                    HeaderCase{"of_0_blocks_skips_one_line", "x*\n0\nindex\n", 0},
                    HeaderCase{"of_0_blocks_without_that_line", "x*\n0\n", 1},
                    HeaderCase{"of_5_blocks_skips_one_line", "x*\n5\n1\n", 0},
                    HeaderCase{"of_6_blocks_skips_two_lines", "x*\n6\n1\n", 1},
                    HeaderCase{"of_minus_3_blocks_skips_one_line", "x*\n-3\n", 1},
                    HeaderCase{"of_minus_4_blocks_skips_none", "x*\n-4\n", 0},
                    HeaderCase{"of_the_largest_count", "x*\n2147483647\n1\n2\n", 1},
                    HeaderCase{"of_a_count_past_the_largest", "x*\n2147483648\n1\n", 1},
                    HeaderCase{"that_is_empty", "", 1}),
    testing::PrintToStringParamName());

TEST_P(TriangleFileFlue_status, is_returned_and_nothing_is_delivered) {
    Flue flue(GetParam().text);
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), GetParam().status);
    EXPECT_EQ(block.size(), 0);
    double corners[9];
    EXPECT_EQ(flue.read_next(corners), GetParam().status);
    EXPECT_EQ(flue.read_next(corners), GetParam().status);
    flue.read_close();
    EXPECT_NE(flue.read_next(corners), 0);
}

INSTANTIATE_TEST_SUITE_P(
    blocks, TriangleFileFlue_status,
    testing::Values(
        StatusCase{"end_of_file_at_the_name_is_1", cut_before(0), 1},
        StatusCase{"end_of_file_before_the_counts_is_1", cut_before(counts_line), 1},
        StatusCase{"end_of_file_in_the_eight_lines_is_3", cut_before(first_node_line - 1), 3},
        StatusCase{"end_of_file_on_the_first_line_of_a_node_is_1", cut_before(first_node_line), 1},
        StatusCase{"end_of_file_on_the_second_line_of_a_node_is_3", cut_before(first_node_line + 1),
                   3},
        StatusCase{"end_of_file_in_the_triangles_is_1", cut_before(triangle_line), 1},
        StatusCase{"zero_nodes_are_3", with_line(Block(), counts_line, "0 0 0 1"), 3},
        StatusCase{"zero_triangles_are_3", with_line(Block(), counts_line, "0 0 3 0"), 3},
        StatusCase{"negative_counts_are_3", with_line(Block(), counts_line, "0 0 -3 1"), 3},
        StatusCase{"three_numbers_of_counts_are_3", with_line(Block(), counts_line, "0 0 3"), 3},
        StatusCase{"a_huge_count_of_nodes_ends_on_a_triangles_second_line",
                   with_line(Block(), counts_line, "0 0 2147483647 1"), 3},
        StatusCase{"a_huge_count_of_triangles_ends_with_the_file",
                   with_line(Block(), counts_line, "0 0 3 2147483647"), 1},
        StatusCase{"huge_counts_of_both_do_not_overflow",
                   with_line(Block(), counts_line, "0 0 2147483647 2147483647"), 3},
        StatusCase{"a_count_of_nodes_past_the_largest_does_not_parse",
                   with_line(Block(), counts_line, "0 0 2147483648 1"), 3},
        StatusCase{"a_count_of_triangles_past_the_largest_does_not_parse",
                   with_line(Block(), counts_line, "0 0 3 4294967295"), 3},
        StatusCase{"a_node_line_that_does_not_parse_is_3",
                   with_line(Block(), first_node_line, "0 zero 0"), 3},
        StatusCase{"a_node_that_is_nan_does_not_parse",
                   with_line(Block(), first_node_line, "0 nan 0"), 3},
        StatusCase{"a_node_that_is_infinite_does_not_parse",
                   with_line(Block(), first_node_line, "inf 0 0"), 3},
        StatusCase{"a_node_past_the_largest_double_does_not_parse",
                   with_line(Block(), first_node_line, "0 0 1e999"), 3},
        StatusCase{"a_hexadecimal_node_does_not_parse",
                   with_line(Block(), first_node_line, "0 0x1p3 0"), 3},
        StatusCase{"a_triangle_line_with_two_numbers_is_1",
                   with_line(Block(), triangle_line, "1 2"), 1},
        StatusCase{"a_triangle_line_that_does_not_parse_is_1",
                   with_line(Block(), triangle_line, "one 2 3"), 1},
        StatusCase{"a_triangle_number_of_0_is_3", with_line(Block(), triangle_line, "0 1 2"), 3},
        StatusCase{"a_triangle_number_past_the_nodes_is_3",
                   with_line(Block(), triangle_line, "1 2 4"), 3},
        StatusCase{"three_numbers_of_a_node_with_normals_are_3",
                   with_line(flue_samples::with_normals(), first_node_line, "0 0 0"), 3},
        StatusCase{"one_number_of_a_normals_rest_is_3",
                   with_line(flue_samples::with_normals(), first_node_line + 1, "0"), 3}),
    testing::PrintToStringParamName());

TEST(TriangleFileFlue, reads_a_block_with_its_name) {
    Block sample;
    sample.name = " \t a name \r";
    Flue flue(flue_samples::file({sample}));
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), 0);
    EXPECT_EQ(model_samples::corners_of(block),
              (std::vector<model_samples::Corners>{{0, 0, 0, 1, 0, 0, 0, 1, 0}}));
    EXPECT_FALSE(model_samples::has_normals(block));
    nmkGiTriDatacoFeature data;
    ASSERT_EQ(block.get(data), 1);
    EXPECT_EQ(data->get_name().view(), "a name");
    EXPECT_EQ(flue.get_block(block), 1);
    EXPECT_EQ(flue.triangle_count(), 1);
    EXPECT_EQ(flue.get_box().max(), giPoint3(1, 1, 0));
}

TEST(TriangleFileFlue, indices_of_a_second_block_follow_the_nodes_of_the_first) {
    Flue flue(flue_samples::file({Block(), Block()}));
    giTriBlock block;
    EXPECT_EQ(read_all(flue, block), 1);
    EXPECT_EQ(model_samples::triangles_of(block)[1], giTriangle(3, 4, 5));
    EXPECT_EQ(flue.triangle_count(), 2);
}

TEST(TriangleFileFlue, the_name_of_a_block_replaces_that_of_the_block_before) {
    Block second;
    second.name = "second";
    Flue flue(flue_samples::file({Block(), second}));
    giTriBlock block;
    EXPECT_EQ(read_all(flue, block), 1);
    nmkGiTriDatacoFeature data;
    ASSERT_EQ(block.get(data), 1);
    EXPECT_EQ(data->get_name().view(), "second");
}

TEST(TriangleFileFlue, a_file_of_0_blocks_is_at_its_end) {
    Flue flue(flue_samples::header(0) + text_of(flue_samples::lines_of(Block())));
    giTriBlock block;
    EXPECT_EQ(flue.header, 0);
    EXPECT_EQ(flue.get_block(block), 1);
    EXPECT_EQ(flue.percent_read(), 0);
}

TEST(TriangleFileFlue, numbers_are_read_as_sscanf_reads_them) {
    const std::string text = with_line(Block(), first_node_line, "+1.5-2e1.25rubbish");
    Flue flue(text);
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), 0);
    EXPECT_EQ(model_samples::nodes_of(block)[0], giPoint3(1.5, -20, 0.25));
}

TEST(TriangleFileFlue, the_mark_of_an_unset_point_is_a_coordinate_like_any_other) {
    Block marked;
    marked.nodes[0] = "-1.7976931348623157e308 0 1.7976931348623157e308";
    Flue flue(flue_samples::file({marked}));
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), 0);
    EXPECT_EQ(model_samples::nodes_of(block).at(0), giPoint3(gi_unset_low, 0, gi_unset_high));
}

TEST(TriangleFileFlue, a_nul_ends_what_is_parsed_of_a_line) {
    const std::string line("0 0\0 0", 6);
    EXPECT_EQ(first_status(with_line(Block(), first_node_line, line)), 3);
}

TEST(TriangleFileFlue, a_line_of_more_than_99_bytes_counts_as_several) {
    // The rest of the name's line is one of the two that are skipped.
    Block sample;
    sample.name = std::string(99, 'n') + "rest";
    std::vector<std::string> lines = flue_samples::lines_of(sample);
    lines.erase(lines.begin() + 1);
    EXPECT_EQ(first_status(flue_samples::header(1) + text_of(lines)), 0);
}

TEST(TriangleFileFlue, a_line_of_98_bytes_is_one_and_the_end_of_a_longer_one_is_another) {
    for (const std::size_t length : {98U, 99U}) {
        Block sample;
        sample.name = std::string(length, 'n');
        std::vector<std::string> lines = flue_samples::lines_of(sample);
        if (length == 99) lines.erase(lines.begin() + 1);
        EXPECT_EQ(first_status(flue_samples::header(1) + text_of(lines)), 0) << length;
    }
}

TEST(TriangleFileFlue, numbers_do_not_depend_on_the_locale) {
    const CommaLocale comma;
    const std::string text = with_line(Block(), first_node_line, "0.5 0 0");
    Flue flue(text);
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), 0);
    EXPECT_EQ(model_samples::nodes_of(block)[0], giPoint3(0.5, 0, 0));
}

TEST(TriangleFileFlue, normals_are_kept_at_the_indices_of_their_nodes) {
    Flue flue(flue_samples::file({flue_samples::with_normals(), flue_samples::with_normals("-1")}));
    giTriBlock block;
    EXPECT_EQ(read_all(flue, block), 1);
    ASSERT_EQ(model_samples::normals_of(block).size(), 6U);
    EXPECT_EQ(model_samples::normals_of(block)[0], giVector3(0, 0, 1));
    EXPECT_EQ(model_samples::normals_of(block)[3], giVector3(0, 0, -1));
}

TEST(TriangleFileFlue, normals_that_are_not_wanted_are_not_parsed) {
    Block sample = flue_samples::with_normals();
    sample.nodes[1] = "no number";
    Flue flue(flue_samples::file({sample}), 0);
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), 0);
    EXPECT_FALSE(model_samples::has_normals(block));
}

TEST(TriangleFileFlue, only_a_flag_of_1_announces_normals) {
    for (const int flag : {0, 2, -1}) {
        Block flagged = flue_samples::with_normals();
        flagged.has_normals = flag;
        Flue flue(flue_samples::file({flagged}));
        giTriBlock block;
        EXPECT_EQ(flue.get_block(block), 0);
        EXPECT_FALSE(model_samples::has_normals(block)) << flag;
    }
}

TEST(TriangleFileFlue, a_block_without_normals_ends_them_for_all_later_blocks) {
    Flue flue(
        flue_samples::file({flue_samples::with_normals(), Block(), flue_samples::with_normals()}));
    giTriBlock first;
    EXPECT_EQ(flue.get_block(first), 0);
    EXPECT_TRUE(model_samples::has_normals(first));
    giTriBlock rest;
    EXPECT_EQ(read_all(flue, rest), 1);
    EXPECT_FALSE(model_samples::has_normals(rest));
    EXPECT_EQ(model_samples::nodes_of(rest).size(), 6U);
}

TEST(TriangleFileFlue, a_normal_of_length_0_9_ends_normals_for_the_rest_of_the_file) {
    Flue flue(
        flue_samples::file({flue_samples::with_normals("0.9"), flue_samples::with_normals()}));
    giTriBlock block;
    EXPECT_EQ(read_all(flue, block), 1);
    EXPECT_FALSE(model_samples::has_normals(block));
    EXPECT_EQ(model_samples::nodes_of(block).size(), 6U);
}

TEST(TriangleFileFlue, behind_a_bad_normal_three_numbers_are_enough) {
    Block sample = flue_samples::with_normals("0.9");
    sample.nodes[2] = "1 0 0";
    sample.nodes[3] = "anything";
    EXPECT_EQ(first_status(flue_samples::file({sample})), 0);
}

TEST(TriangleFileFlue, a_normal_is_a_unit_vector_within_1e_4) {
    for (const auto& [z, is_kept] : {std::pair("1.00009", true), std::pair("1.00011", false),
                                     std::pair("0.99991", true), std::pair("-1", true)}) {
        Flue flue(flue_samples::file({flue_samples::with_normals(z)}));
        giTriBlock block;
        EXPECT_EQ(flue.get_block(block), 0);
        EXPECT_EQ(model_samples::has_normals(block), is_kept) << z;
    }
}

TEST(TriangleFileFlue, percent_counts_a_complete_block_twice) {
    Flue two(flue_samples::file({Block(), Block()}));
    giTriBlock block;
    EXPECT_EQ(two.percent_read(), 0);
    two.get_block(block);
    EXPECT_EQ(two.percent_read(), 100);
    two.get_block(block);
    EXPECT_EQ(two.percent_read(), 150);
    Flue one(flue_samples::file({Block()}));
    one.get_block(block);
    EXPECT_EQ(one.percent_read(), 200);
}

TEST(TriangleFileFlue, percent_is_shown_at_each_1000_items_and_behind_the_nodes) {
    Flue flue(flue_samples::file({flue_samples::large(1500, 1500)}));
    const PercentRecorder recorder(flue);
    giTriBlock block;
    EXPECT_EQ(flue.get_block(block), 0);
    EXPECT_EQ(recorder.percents, (std::vector<int>{33, 50, 66, 100}));
}

TEST(TriangleFileFlue, each_call_of_percent_can_stop_the_reading) {
    for (std::size_t call = 1; call <= 4; ++call) {
        Flue flue(flue_samples::file({flue_samples::large(1500, 1500)}));
        const PercentRecorder recorder(flue, call);
        giTriBlock block;
        EXPECT_EQ(flue.get_block(block), 2) << call;
        EXPECT_EQ(block.size(), 0) << call;
        EXPECT_EQ(flue.get_block(block), 2) << call;
    }
}

TEST(TriangleFileFlue, hands_out_the_arrays_of_a_block) {
    Flue flue(flue_samples::file({flue_samples::with_normals(), Block()}));
    double const* nodes = nullptr;
    double const* normals = nullptr;
    int const* triangles = nullptr;
    int node_count = 0;
    int triangle_count = 0;
    ASSERT_EQ(flue.get_block(&nodes, &normals, &node_count, &triangles, &triangle_count), 0);
    EXPECT_EQ(node_count, 3);
    EXPECT_EQ(triangle_count, 1);
    EXPECT_EQ(nodes[3], 1.0);
    EXPECT_EQ(normals[2], 1.0);
    EXPECT_EQ(triangles[0], 1);
    EXPECT_EQ(triangles[2], 3);
    ASSERT_EQ(flue.get_block(&nodes, &normals, &node_count, &triangles, &triangle_count), 0);
    EXPECT_EQ(normals, nullptr);
    EXPECT_EQ(flue.get_block(&nodes, &normals, &node_count, &triangles, &triangle_count), 1);
    EXPECT_EQ(nodes, nullptr);
    EXPECT_EQ(triangles, nullptr);
    EXPECT_EQ(node_count, 3);
}

TEST(TriangleFileFlue, hands_out_null_for_a_block_that_fails) {
    Flue flue(with_line(Block(), counts_line, "0 0 0 0"));
    double const* nodes = reinterpret_cast<double const*>(&flue);
    int const* triangles = reinterpret_cast<int const*>(&flue);
    int counts[2];
    EXPECT_EQ(flue.get_block(&nodes, &counts[0], &triangles, &counts[1]), 3);
    EXPECT_EQ(nodes, nullptr);
    EXPECT_EQ(triangles, nullptr);
}

TEST(TriangleFileFlue, read_next_gives_triangle_after_triangle_and_block_after_block) {
    Block two;
    two.triangles = {"1 2 3", "3 2 1"};
    Flue flue(flue_samples::file({two, Block()}));
    double corners[9];
    ASSERT_EQ(flue.read_next(corners), 0);
    EXPECT_EQ(corners[3], 1.0);
    ASSERT_EQ(flue.read_next(corners), 0);
    EXPECT_EQ(corners[1], 1.0);
    ASSERT_EQ(flue.read_next(corners), 0);
    EXPECT_EQ(flue.read_next(corners), 1);
    EXPECT_EQ(flue.read_next(corners), 1);
}

TEST(TriangleFileFlue, every_prefix_of_a_file_has_a_status) {
    const std::string text = flue_samples::file({flue_samples::with_normals(), Block()});
    for (std::size_t size = 0; size < text.size(); ++size) {
        Flue flue(text.substr(0, size));
        giTriBlock block;
        const int status = read_all(flue, block);
        EXPECT_TRUE(status == 1 || status == 3) << size;
        EXPECT_LE(model_samples::triangles_of(block).size(), 2U) << size;
    }
}

TEST(TriangleFileFlue, a_long_line_without_end_has_a_status) {
    EXPECT_EQ(Flue(std::string(1000000, 'x')).header, 1);
    EXPECT_EQ(first_status(flue_samples::header(1) + std::string(1000000, '1')), 3);
}
