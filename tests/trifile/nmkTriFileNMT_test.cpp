#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>
#include <nmktoolbox/trifile/nmkTriFileNMT.h>

#include <climits>
#include <limits>
#include <ostream>
#include <string>

#include "model_samples.h"
#include "nmt_samples.h"
#include "trifile/percent_recorder.h"
#include "trifile/unit_switch.h"

using model_samples::MemoryFile;
using nmt_samples::Block;

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

// Makes the count of triangles visible.
class Nmt : public nmkTriFileNMT {
  public:
    explicit Nmt(const std::string& bytes, int with_normals = 1) : nmkTriFileNMT(with_normals) {
        header = read_init(utPtrClaimed, new MemoryFile(bytes));
    }

    std::int32_t triangle_count() const { return m_triangle_count; }

    int header;
};

int read_all(TriangleFile& file, giTriBlock& block) {
    int status = 0;
    while (status == 0) status = file.get_block(block);
    return status;
}

// Reads through the pull operations; the status that ended it.
int pull_all(nmkTriFileNMT& file, std::vector<giPoint3>& nodes,
             std::vector<giTriangle>& triangles) {
    giPoint3 point;
    giVector3 normal;
    int has_normal = 0;
    giTriangle triangle;
    int status = 0;
    while ((status = file.next_block()) == 0) {
        while ((status = file.next_node(point, normal, &has_normal)) == 0) nodes.push_back(point);
        if (status != 1) return status;
        while ((status = file.next_triangle(triangle)) == 0) triangles.push_back(triangle);
        if (status != 1) return status;
    }
    return status;
}

struct MarkCase {
    const char* name;
    giPoint3 first;
    int status;
};

std::ostream& operator<<(std::ostream& out, const MarkCase& each) { return out << each.name; }

class nmkTriFileNMT_marks : public testing::TestWithParam<MarkCase> {};

}  // namespace

TEST(nmkTriFileNMT, reads_a_block) {
    Nmt file(nmt_samples::file({Block()}));
    giTriBlock block;
    EXPECT_EQ(file.header, 0);
    EXPECT_EQ(file.get_block(block), 0);
    EXPECT_EQ(model_samples::corners_of(block),
              (std::vector<model_samples::Corners>{{0, 0, 0, 1, 0, 0, 0, 1, 0}}));
    EXPECT_FALSE(model_samples::has_normals(block));
    EXPECT_EQ(block.size(), 2);
    EXPECT_EQ(file.get_block(block), 1);
    EXPECT_EQ(file.get_block(block), 1);
    EXPECT_EQ(file.triangle_count(), 1);
    EXPECT_EQ(file.get_box().max(), giPoint3(1, 1, 0));
}

TEST(nmkTriFileNMT, indices_of_a_second_block_follow_the_nodes_of_the_first) {
    Nmt file(nmt_samples::file({Block(), Block()}));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_EQ(model_samples::triangles_of(block)[1], giTriangle(3, 4, 5));
    EXPECT_EQ(file.triangle_count(), 2);
}

TEST(nmkTriFileNMT, a_header_that_is_cut_or_bad_makes_it_fail) {
    const std::string bytes = nmt_samples::file({});
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_NE(Nmt(bytes.substr(0, size)).header, 0) << size;
    }
    Nmt file("not a model");
    giTriBlock block;
    EXPECT_NE(file.header, 0);
    EXPECT_EQ(file.get_block(block), 1);
    nmkTriFileNMT never_opened(1);
    giPoint3 point;
    giVector3 normal;
    int has_normal = 0;
    giTriangle triangle;
    EXPECT_EQ(never_opened.next_block(), 1);
    EXPECT_EQ(never_opened.next_node(point, normal, &has_normal), 1);
    EXPECT_EQ(never_opened.next_triangle(triangle), 1);
    EXPECT_EQ(never_opened.percent_read(), 0);
}

TEST(nmkTriFileNMT, a_triangle_at_a_time_is_not_offered) {
    Nmt file(nmt_samples::file({Block()}));
    double corners[9] = {77};
    EXPECT_EQ(file.read_next(corners), 1);
    EXPECT_EQ(corners[0], 77);
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 0);
}

TEST(nmkTriFileNMT, pulls_nodes_and_then_triangles) {
    Nmt file(nmt_samples::file({Block(), Block{false, -1, {9, 9, 9}, {2, 1, 0}, 0}}));
    std::vector<giPoint3> nodes;
    std::vector<giTriangle> triangles;
    EXPECT_EQ(pull_all(file, nodes, triangles), 1);
    ASSERT_EQ(nodes.size(), 6U);
    EXPECT_EQ(nodes[3], giPoint3(9, 9, 9));
    EXPECT_EQ(triangles, (std::vector<giTriangle>{giTriangle(0, 1, 2), giTriangle(2, 1, 0)}));
    EXPECT_EQ(file.triangle_count(), 2);
    EXPECT_EQ(file.percent_read(), 100);
}

TEST(nmkTriFileNMT, behind_the_last_node_nothing_is_touched) {
    Nmt file(nmt_samples::file({Block()}));
    file.next_block();
    giPoint3 point;
    giVector3 normal;
    int has_normal = 7;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(file.next_node(point, normal, &has_normal), 0);
    point = {5, 5, 5};
    has_normal = 7;
    EXPECT_EQ(file.next_node(point, normal, &has_normal), 1);
    EXPECT_EQ(point, giPoint3(5, 5, 5));
    EXPECT_EQ(has_normal, 7);
}

TEST(nmkTriFileNMT, next_block_gives_the_colour_or_minus_1) {
    Nmt file(nmt_samples::file({Block{false, 6, {}, {}, 0}, Block()}));
    int colour = 77;
    EXPECT_EQ(file.next_block(colour), 0);
    EXPECT_EQ(colour, 6);
    giTriBlock rest;
    Nmt other(nmt_samples::file({Block()}));
    EXPECT_EQ(other.next_block(colour), 0);
    EXPECT_EQ(colour, -1);
    std::vector<giPoint3> nodes;
    std::vector<giTriangle> triangles;
    giPoint3 point;
    giVector3 normal;
    int has_normal = 0;
    giTriangle triangle;
    while (other.next_node(point, normal, &has_normal) == 0) {
    }
    while (other.next_triangle(triangle) == 0) {
    }
    colour = 77;
    EXPECT_EQ(other.next_block(colour), 1);
    EXPECT_EQ(colour, -1);
}

TEST(nmkTriFileNMT, a_colour_from_0_on_becomes_a_feature_and_none_does_not) {
    for (const int number : {0, 6}) {
        Nmt file(nmt_samples::file({Block{false, number, {0, 0, 0}, {0, 1, 2}, 0}, Block()}));
        giTriBlock coloured;
        giTriBlock plain;
        EXPECT_EQ(file.get_block(coloured), 0);
        EXPECT_EQ(file.get_block(plain), 0);
        nmkGiTriBlockColourcoFeature colour;
        EXPECT_EQ(plain.get(colour), 0);
        ASSERT_EQ(coloured.get(colour), 1);
        EXPECT_EQ(colour->get_colour(), number);
    }
}

TEST(nmkTriFileNMT, the_colour_of_a_block_replaces_that_of_the_block_before_and_none_leaves_it) {
    const auto coloured = [](int colour) { return Block{false, colour, {0, 0, 0}, {0, 1, 2}, 0}; };
    Nmt file(nmt_samples::file({coloured(6), coloured(7), Block()}));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    nmkGiTriBlockColourcoFeature colour;
    ASSERT_EQ(block.get(colour), 1);
    EXPECT_EQ(colour->get_colour(), 7);
}

TEST(nmkTriFileNMT, a_colour_that_is_not_pulled_is_skipped) {
    const Block coloured{false, 6, {5, 0, 0}, {0, 1, 2}, 0};
    Nmt file(nmt_samples::file({coloured, coloured}));
    std::vector<giPoint3> nodes;
    std::vector<giTriangle> triangles;
    EXPECT_EQ(pull_all(file, nodes, triangles), 1);
    ASSERT_EQ(nodes.size(), 6U);
    EXPECT_EQ(nodes[3], giPoint3(5, 0, 0));
}

TEST(nmkTriFileNMT, normals_are_at_the_indices_of_their_nodes) {
    const Block with{true, -1, {0, 0, 0}, {0, 1, 2}, 0};
    Nmt file(nmt_samples::file({with, with}));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_EQ(model_samples::normals_of(block), (std::vector<giVector3>(6, giVector3(0, 0, 1))));
}

TEST(nmkTriFileNMT, a_block_without_nodes_keeps_an_empty_array_of_normals) {
    Nmt file(nmt_samples::written([](nmkNMTFileWrite& writer) {
        return writer.write_header("", true, 1, 0, 0) | writer.write_block(0, 0, false, -1);
    }));
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 0);
    EXPECT_TRUE(model_samples::has_normals(block));
    EXPECT_TRUE(model_samples::normals_of(block).empty());
}

TEST(nmkTriFileNMT, normals_that_are_not_wanted_are_read_and_the_first_node_removes_the_feature) {
    const Block with{true, -1, {0, 0, 0}, {0, 1, 2}, 0};
    Nmt file(nmt_samples::file({with, with}), 0);
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_FALSE(model_samples::has_normals(block));
    EXPECT_EQ(model_samples::triangles_of(block).size(), 2U);
}

TEST(nmkTriFileNMT, normals_that_are_not_wanted_are_tested) {
    for (const int with_normals : {0, 1}) {
        Nmt file(nmt_samples::file({Block{true, -1, {0, 0, 0}, {0, 1, 2}, -largest}}),
                 with_normals);
        giTriBlock block;
        EXPECT_EQ(file.get_block(block), 3);
        EXPECT_EQ(model_samples::nodes_of(block).size(), 2U);
    }
}

TEST(nmkTriFileNMT, a_block_without_normals_before_one_with_them_gets_zero_vectors) {
    Nmt file(nmt_samples::file({Block(), Block{true, -1, {0, 0, 0}, {0, 1, 2}, 0}}));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    const auto normals = model_samples::normals_of(block);
    ASSERT_EQ(normals.size(), 6U);
    EXPECT_EQ(normals[2], giVector3(0, 0, 0));
    EXPECT_EQ(normals[3], giVector3(0, 0, 1));
}

TEST(nmkTriFileNMT, a_block_without_normals_takes_those_of_the_block_before) {
    Nmt file(nmt_samples::file({Block{true, -1, {0, 0, 0}, {0, 1, 2}, 0}, Block()}));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_FALSE(model_samples::has_normals(block));
}

TEST_P(nmkTriFileNMT_marks, are_tested_in_x_both_ways_and_in_y_and_z_one_way) {
    Nmt file(nmt_samples::file({Block{false, -1, GetParam().first, {0, 1, 2}, 0}}));
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(
    nodes, nmkTriFileNMT_marks,
    testing::Values(MarkCase{"x_minus_the_largest", {-largest, 0, 0}, 3},
                    MarkCase{"x_the_largest", {largest, 0, 0}, 3},
                    MarkCase{"y_the_largest", {0, largest, 0}, 3},
                    MarkCase{"z_the_largest", {0, 0, largest}, 3},
                    MarkCase{"y_minus_the_largest_passes", {0, -largest, 0}, 0},
                    MarkCase{"z_minus_the_largest_passes", {0, 0, -largest}, 0},
                    MarkCase{"infinities_pass", {infinity, -infinity, 0}, 0},
                    MarkCase{"nan_passes", {0, std::numeric_limits<double>::quiet_NaN(), 0}, 0}),
    testing::PrintToStringParamName());

TEST(nmkTriFileNMT, marks_are_tested_before_scaling) {
    const UnitSwitch inches(nmkUnitsTypeInches);
    Nmt file(nmt_samples::file({Block{false, -1, {0, 0, largest}, {0, 1, 2}, 0}}));
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 3);
}

TEST(nmkTriFileNMT, millimetres_are_converted_to_the_units_in_force) {
    const UnitSwitch inches(nmkUnitsTypeInches);
    Nmt file(nmt_samples::file({Block{true, -1, {25.4, 0, 0}, {0, 1, 2}, 0}}));
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 0);
    const double factor = nmkUnitsUtils::get_scale_from(nmkUnitsTypeMillimetres);
    EXPECT_LT(factor, 1.0);
    EXPECT_EQ(model_samples::nodes_of(block)[0], giPoint3(25.4 * factor, 0, 0));
    EXPECT_EQ(model_samples::normals_of(block)[0], giVector3(0, 0, 1));
    EXPECT_EQ(file.get_box().max().x, 25.4 * factor);
}

TEST(nmkTriFileNMT, a_file_in_inches_is_not_converted_to_either_unit) {
    for (const nmkUnitsType units : {nmkUnitsTypeMillimetres, nmkUnitsTypeInches}) {
        const UnitSwitch in_force(units);
        Nmt file(nmt_samples::file({Block()}, false));
        giTriBlock block;
        EXPECT_EQ(file.get_block(block), 0);
        EXPECT_EQ(model_samples::nodes_of(block)[1], giPoint3(1, 0, 0));
    }
}

TEST(nmkTriFileNMT, an_index_outside_its_block_is_bad_data) {
    for (const giTriangle& triangle :
         {giTriangle(0, 1, 3), giTriangle(-1, 1, 2), giTriangle(0, INT_MIN, 2)}) {
        const std::string bytes = nmt_samples::file({Block{false, -1, {0, 0, 0}, triangle, 0}});
        Nmt file(bytes);
        giTriBlock block;
        EXPECT_EQ(file.get_block(block), 3);
        EXPECT_TRUE(model_samples::triangles_of(block).empty());
        Nmt pulled(bytes);
        std::vector<giPoint3> nodes;
        std::vector<giTriangle> triangles;
        EXPECT_EQ(pull_all(pulled, nodes, triangles), 3);
    }
}

TEST(nmkTriFileNMT, percent_is_shown_at_each_1000_items) {
    Nmt file(nmt_samples::large(1500, 1500));
    const PercentRecorder recorder(file);
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 0);
    EXPECT_EQ(recorder.percents, (std::vector<int>{33, 66, 100}));
    EXPECT_EQ(file.percent_read(), 100);
}

TEST(nmkTriFileNMT, percent_is_the_quotient_times_100_cut_to_a_whole_number) {
    Nmt file(nmt_samples::large(50, 50));
    ASSERT_EQ(file.next_block(), 0);
    giPoint3 point;
    giVector3 normal;
    int has_normal = 0;
    for (int i = 0; i < 29; ++i) ASSERT_EQ(file.next_node(point, normal, &has_normal), 0);
    // 29.0 / 100.0 * 100.0 is a little below 29.
    EXPECT_EQ(file.percent_read(), 28);
}

TEST(nmkTriFileNMT, the_node_of_a_stop_is_counted_and_not_stored) {
    Nmt file(nmt_samples::large(1500, 1500));
    const PercentRecorder recorder(file, 1);
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 2);
    EXPECT_EQ(model_samples::nodes_of(block).size(), 999U);
    EXPECT_EQ(file.get_box().max().x, 999.0);
    EXPECT_EQ(file.percent_read(), 33);
}

TEST(nmkTriFileNMT, the_triangle_of_a_stop_is_counted_and_not_stored) {
    Nmt file(nmt_samples::large(1500, 1500));
    const PercentRecorder recorder(file, 2);
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 2);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 499U);
    EXPECT_EQ(file.triangle_count(), 500);
}

TEST(nmkTriFileNMT, a_pulled_triangle_reports_the_stop) {
    Nmt file(nmt_samples::large(3, 1500));
    const PercentRecorder recorder(file, 1);
    std::vector<giPoint3> nodes;
    std::vector<giTriangle> triangles;
    EXPECT_EQ(pull_all(file, nodes, triangles), 2);
    EXPECT_EQ(triangles.size(), 996U);
}

TEST(nmkTriFileNMT, every_prefix_of_a_file_has_a_status) {
    const std::string bytes = nmt_samples::file({Block{true, 4, {0, 0, 0}, {0, 1, 2}, 0}, Block()});
    const std::size_t header_size = nmt_samples::file({}).size();
    for (std::size_t size = header_size; size < bytes.size(); ++size) {
        Nmt file(bytes.substr(0, size));
        giTriBlock block;
        EXPECT_EQ(read_all(file, block), 3) << size;
        EXPECT_LE(model_samples::triangles_of(block).size(), 1U) << size;
    }
}

TEST(nmkTriFileNMT, every_prefix_of_a_block_with_its_colour_pulls_to_a_status) {
    const std::string bytes = nmt_samples::file({Block{true, 4, {0, 0, 0}, {0, 1, 2}, 0}});
    for (std::size_t size = nmt_samples::file({}).size(); size < bytes.size(); ++size) {
        Nmt file(bytes.substr(0, size));
        int colour = 77;
        int status = file.next_block(colour);
        giPoint3 point;
        giVector3 normal;
        int has_normal = 0;
        int nodes = 0;
        while (status == 0 && nodes < 3) {
            status = file.next_node(point, normal, &has_normal);
            ++nodes;
        }
        giTriangle triangle;
        if (status == 0) status = file.next_triangle(triangle);
        EXPECT_EQ(status, 3) << size;
    }
}

TEST(nmkTriFileNMT, forged_counts_end_with_the_file) {
    for (const std::uint32_t count : model_samples::forged_counts) {
        for (const std::size_t at : {0U, 4U}) {
            std::string bytes = nmt_samples::file({Block()});
            const std::size_t block_at = nmt_samples::file({}).size() + at;
            std::memcpy(bytes.data() + block_at, &count, sizeof count);
            Nmt file(bytes);
            giTriBlock block;
            const int status = read_all(file, block);
            const bool is_good = at == 4 && count <= 1;
            EXPECT_EQ(status, is_good ? 1 : 3) << count << " at " << at;
        }
        std::string bytes = nmt_samples::file({Block()});
        std::memcpy(bytes.data() + 12, &count, sizeof count);
        Nmt file(bytes);
        giTriBlock block;
        if (file.header == 0) {
            EXPECT_EQ(read_all(file, block), count <= 1 ? 1 : 3) << count;
        }
        EXPECT_EQ(file.header != 0, count > INT_MAX) << count;
    }
}

TEST(nmkTriFileNMT, a_header_that_counts_too_little_gives_a_percentage_past_100) {
    std::string bytes = nmt_samples::file({Block()});
    const std::uint32_t one = 1;
    const std::uint32_t none = 0;
    std::memcpy(bytes.data() + 16, &one, sizeof one);
    std::memcpy(bytes.data() + 20, &none, sizeof none);
    Nmt file(bytes);
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_EQ(file.percent_read(), 400);
}

TEST(nmkTriFileNMT, once_closed_is_at_the_end_of_the_data) {
    Nmt file(nmt_samples::file({Block(), Block()}));
    giTriBlock block;
    file.get_block(block);
    file.read_close();
    EXPECT_EQ(file.get_block(block), 1);
    EXPECT_EQ(file.next_block(), 1);
    Nmt pulled(nmt_samples::file({Block()}));
    ASSERT_EQ(pulled.next_block(), 0);
    pulled.read_close();
    giPoint3 point;
    giVector3 normal;
    int has_normal = 0;
    giTriangle triangle;
    EXPECT_EQ(pulled.next_node(point, normal, &has_normal), 1);
    EXPECT_EQ(pulled.next_triangle(triangle), 1);
}
