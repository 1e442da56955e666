#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkSTLFileWrite.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

#include "model_samples.h"

namespace {

// A file that keeps its bytes, counts what it is asked for, and fails on demand.
class CountingFile : public nmkNMTFile {
  public:
    int seek(std::int64_t position, int origin) override {
        EXPECT_EQ(origin, apNMKSeekBegin);
        ++seeks;
        if (fail_seeks > 0 && fail_seeks-- > 0) return 1;
        at = static_cast<std::size_t>(position);
        return 0;
    }
    std::size_t write(const void* buffer, std::size_t size, std::size_t count) override {
        std::size_t total = size * count;
        if (fail_writes > 0 && fail_writes-- > 0) total /= 2;
        if (bytes.size() < at + total) bytes.resize(at + total, '?');
        std::memcpy(bytes.data() + at, buffer, total);
        at += total;
        return total;
    }
    char* gets(char*, int) override { return nullptr; }
    std::size_t read(void*, std::size_t, std::size_t) override { return 0; }
    std::int64_t length() override { return static_cast<std::int64_t>(bytes.size()); }
    void set_error(int code, nmkNMTErr error) override {
        EXPECT_EQ(code, 0);
        EXPECT_EQ(error, 1);
        ++errors;
    }

    std::string bytes;
    std::size_t at = 0;
    int seeks = 0;
    int errors = 0;
    int fail_seeks = 0;
    int fail_writes = 0;
};

// The count of facets, which nobody writes one by one up to its limit. An explicit instantiation
// may name private members; it hands this one on through a friend function.
struct FacetsWritten {
    using Type = std::int32_t nmkSTLFileWrite::*;
    friend Type member_of(FacetsWritten);
};

template <class Tag, typename Tag::Type member>
struct Opened {
    friend typename Tag::Type member_of(Tag) { return member; }
};

constexpr double origin[] = {0, 0, 0};
constexpr double one_two_three[] = {1, 2, 3};

int write_any_facet(nmkSTLFileWrite& writer) {
    return writer.write_facet(origin, one_two_three, origin, origin);
}

float float_at(const std::string& bytes, std::size_t at) {
    float value = 0;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

std::uint32_t count_in(const std::string& bytes) {
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + 80, sizeof count);
    return count;
}

giVector3 normal_in(const std::string& bytes) {
    return {float_at(bytes, 84), float_at(bytes, 88), float_at(bytes, 92)};
}

const std::string default_text = "STL file written by BrackMILL";

template struct Opened<FacetsWritten, &nmkSTLFileWrite::m_facets_written>;

}  // namespace

TEST(nmkSTLFileWrite, header_and_count_alone_are_84_bytes) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(file.bytes, default_text + std::string(51 + 4, '\0'));
    EXPECT_EQ(file.seeks, 1);
}

TEST(nmkSTLFileWrite, a_header_text_is_padded_with_nul) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_header("text"), 0);
    EXPECT_EQ(file.bytes, "text" + std::string(76, '\0'));
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(file.bytes.substr(0, 5), std::string("text") + '\0');
    EXPECT_EQ(file.seeks, 1);
}

TEST(nmkSTLFileWrite, a_header_text_of_79_characters_or_more_is_closed_by_one_nul) {
    for (const std::size_t length : {78U, 79U, 80U, 200U}) {
        CountingFile file;
        nmkSTLFileWrite writer(&file);
        EXPECT_EQ(writer.write_header(std::string(length, 'x').c_str()), 0);
        const std::size_t kept = std::min<std::size_t>(length, 79);
        EXPECT_EQ(file.bytes, std::string(kept, 'x') + std::string(80 - kept, '\0')) << length;
    }
}

TEST(nmkSTLFileWrite, a_null_header_text_is_80_nul_bytes_and_stays) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_header(nullptr), 0);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(file.bytes, std::string(84, '\0'));
}

TEST(nmkSTLFileWrite, a_facet_is_normal_vertices_and_attribute_0) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    writer.write_header("");
    EXPECT_EQ(writer.write_facet({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, giVector3(0.5, -0.25, 10)), 0);
    EXPECT_EQ(writer.write_end(), 0);
    ASSERT_EQ(file.bytes.size(), 134U);
    const float expected[] = {0.5F, -0.25F, 10, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(float_at(file.bytes, 84 + 4 * i), expected[i]);
    EXPECT_EQ(file.bytes.substr(132), std::string(2, '\0'));
    EXPECT_EQ(count_in(file.bytes), 1U);
}

TEST(nmkSTLFileWrite, the_computed_normal_points_outwards_and_is_no_unit_vector) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_facet({0, 0, 0}, {2, 0, 0}, {0, 3, 0}), 0);
    EXPECT_EQ(normal_in(file.bytes), giVector3(0, 0, 6));
}

// The difference of the third and the first point would lose the 1.
TEST(nmkSTLFileWrite, the_computed_normal_is_that_of_the_first_two_edges) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_facet({0x1p54, 0x1p54, 0}, {0, 0, 0}, {1, 0, 0}), 0);
    EXPECT_EQ(normal_in(file.bytes), giVector3(0, 0, 0x1p54));
}

TEST(nmkSTLFileWrite, a_degenerate_triangle_has_a_normal_of_length_0) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_facet({1, 1, 1}, {2, 2, 2}, {3, 3, 3}), 0);
    EXPECT_EQ(normal_in(file.bytes), giVector3(0, 0, 0));
}

TEST(nmkSTLFileWrite, a_transform_maps_the_points_before_the_normal) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    const giXform3 twice(giXform3Scale, 2, 2, 2);
    EXPECT_EQ(writer.write_facet({0, 0, 0}, {2, 0, 0}, {0, 3, 0}, twice), 0);
    EXPECT_EQ(normal_in(file.bytes), giVector3(0, 0, 24));
    EXPECT_EQ(float_at(file.bytes, 108), 4.0F);
}

TEST(nmkSTLFileWrite, doubles_past_the_range_of_float_are_infinite) {
    constexpr double largest = std::numeric_limits<float>::max();
    const double nearly = std::nextafter(largest + 0x1p103, 0.0);
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    const double v1[] = {1e39, -1e39, std::numeric_limits<double>::quiet_NaN()};
    const double v2[] = {largest + 0x1p103, nearly, -nearly};
    const double v3[] = {0.1, 1e-50, -std::numeric_limits<double>::max()};
    EXPECT_EQ(writer.write_facet(v1, v2, v3, origin), 0);
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(float_at(file.bytes, 96), infinity);
    EXPECT_EQ(float_at(file.bytes, 100), -infinity);
    EXPECT_TRUE(std::isnan(float_at(file.bytes, 104)));
    EXPECT_EQ(float_at(file.bytes, 108), infinity);
    EXPECT_EQ(float_at(file.bytes, 112), std::numeric_limits<float>::max());
    EXPECT_EQ(float_at(file.bytes, 116), std::numeric_limits<float>::lowest());
    EXPECT_EQ(float_at(file.bytes, 120), 0.1F);
    EXPECT_EQ(float_at(file.bytes, 124), 0.0F);
    EXPECT_EQ(float_at(file.bytes, 128), -infinity);
}

TEST(nmkSTLFileWrite, facets_may_be_written_before_the_header) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(write_any_facet(writer), 0);
    EXPECT_EQ(file.bytes.substr(0, 84), std::string(84, '?'));
    EXPECT_EQ(writer.write_header("late"), 0);
    EXPECT_EQ(write_any_facet(writer), 0);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(file.bytes.size(), 184U);
    EXPECT_EQ(file.bytes.substr(0, 4), "late");
    EXPECT_EQ(count_in(file.bytes), 2U);
}

TEST(nmkSTLFileWrite, seeks_only_where_the_file_is_elsewhere) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    for (int i = 0; i < 100; ++i) write_any_facet(writer);
    EXPECT_EQ(file.seeks, 1);
    writer.write_header("");
    EXPECT_EQ(file.seeks, 2);
    writer.write_end();
    EXPECT_EQ(file.seeks, 2);
    writer.write_end();
    EXPECT_EQ(file.seeks, 3);
}

TEST(nmkSTLFileWrite, a_facet_behind_write_end_needs_another_one) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    write_any_facet(writer);
    writer.write_end();
    EXPECT_EQ(write_any_facet(writer), 0);
    EXPECT_EQ(file.bytes.size(), 184U);
    EXPECT_EQ(count_in(file.bytes), 1U);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(count_in(file.bytes), 2U);
    EXPECT_EQ(file.bytes.substr(0, default_text.size()), default_text);
}

TEST(nmkSTLFileWrite, after_a_failed_write_the_next_operation_seeks) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    write_any_facet(writer);
    file.fail_writes = 1;
    EXPECT_EQ(write_any_facet(writer), 1);
    EXPECT_EQ(file.errors, 1);
    EXPECT_EQ(file.seeks, 1);
    EXPECT_EQ(write_any_facet(writer), 0);
    EXPECT_EQ(file.seeks, 2);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(count_in(file.bytes), 2U);
    EXPECT_EQ(file.bytes.size(), 184U);
}

TEST(nmkSTLFileWrite, each_failed_operation_is_recorded_once) {
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    file.fail_seeks = 1;
    EXPECT_EQ(writer.write_header("text"), 1);
    EXPECT_EQ(file.errors, 1);
    file.fail_writes = 1;
    EXPECT_EQ(writer.write_header("text"), 1);
    EXPECT_EQ(file.errors, 2);
    file.fail_writes = 1;
    EXPECT_EQ(writer.write_end(), 1);
    EXPECT_EQ(file.errors, 3);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(file.bytes.substr(0, default_text.size()), default_text);
}

TEST(nmkSTLFileWrite, a_file_that_is_gone_fails) {
    auto file = std::make_unique<CountingFile>();
    nmkSTLFileWrite writer(file.get());
    EXPECT_EQ(write_any_facet(writer), 0);
    file.reset();
    EXPECT_EQ(write_any_facet(writer), 1);
    EXPECT_EQ(writer.write_end(), 1);
}

TEST(nmkSTLFileWrite, a_block_is_written_in_order_and_read_back) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_triblock(block), 0);
    EXPECT_EQ(writer.write_end(), 0);
    ASSERT_EQ(file.bytes.size(), 84U + 4 * 50);
    EXPECT_EQ(count_in(file.bytes), 4U);
    EXPECT_EQ(normal_in(file.bytes), giVector3(0, 0, -1));
    EXPECT_EQ(file.seeks, 2);
}

TEST(nmkSTLFileWrite, normals_of_a_block_are_not_used) {
    giTriBlock block;
    giNormArrcoFeature normals;
    block.add(normals);
    for (int i = 0; i < 3; ++i) normals->add({7, 7, 7});
    model_samples::fill_unshared(block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}});
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_triblock(block), 0);
    EXPECT_EQ(normal_in(file.bytes), giVector3(0, 0, 1));
}

TEST(nmkSTLFileWrite, a_block_without_triangles_writes_nothing) {
    giTriBlock block;
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_triblock(block), 0);
    model_samples::add_node(block, {0, 0, 0});
    giTriArrcoFeature triangles;
    block.add(triangles);
    EXPECT_EQ(writer.write_triblock(block), 0);
    EXPECT_TRUE(file.bytes.empty());
    EXPECT_EQ(file.seeks, 0);
}

TEST(nmkSTLFileWrite, triangles_without_nodes_fail) {
    giTriBlock block;
    model_samples::add_triangle(block, {0, 1, 2});
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    EXPECT_EQ(writer.write_triblock(block), 1);
    EXPECT_TRUE(file.bytes.empty());
}

TEST(nmkSTLFileWrite, facets_before_a_triangle_outside_the_block_stay) {
    for (const std::int32_t index : {3, -1, INT_MAX, INT_MIN}) {
        giTriBlock block;
        model_samples::fill_unshared(block, {{0, 0, 0, 1, 0, 0, 0, 1, 0}});
        model_samples::add_triangle(block, {0, 1, index});
        CountingFile file;
        nmkSTLFileWrite writer(&file);
        EXPECT_EQ(writer.write_triblock(block), 1);
        EXPECT_EQ(writer.write_end(), 0);
        EXPECT_EQ(count_in(file.bytes), 1U);
    }
}

TEST(nmkSTLFileWrite, a_block_ends_at_the_first_failure) {
    giTriBlock block;
    model_samples::fill_unshared(block, model_samples::tetrahedron());
    CountingFile file;
    nmkSTLFileWrite writer(&file);
    file.fail_writes = 1;
    EXPECT_EQ(writer.write_triblock(block), 1);
    EXPECT_EQ(file.errors, 1);
    EXPECT_EQ(writer.write_end(), 0);
    EXPECT_EQ(count_in(file.bytes), 0U);
}

TEST(nmkSTLFileWrite, a_facet_that_would_pass_the_largest_position_fails) {
    class DroppingFile : public CountingFile {
      public:
        std::size_t write(const void*, std::size_t size, std::size_t count) override {
            at += size * count;
            return size * count;
        }
    } file;
    nmkSTLFileWrite writer(&file);
    constexpr int room = (INT_MAX - 84) / 50;
    writer.*member_of(FacetsWritten()) = room - 1;
    EXPECT_EQ(write_any_facet(writer), 0);
    EXPECT_EQ(file.at, 84U + 50U * room);
    EXPECT_EQ(write_any_facet(writer), 1);
    EXPECT_EQ(file.errors, 1);
    EXPECT_EQ(file.at, 84U + 50U * room);
    writer.*member_of(FacetsWritten()) = INT_MAX;
    EXPECT_EQ(write_any_facet(writer), 1);
    EXPECT_EQ(writer.write_end(), 0);
}
