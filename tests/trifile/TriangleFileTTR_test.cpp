#include <gtest/gtest.h>
#include <nmktoolbox/trifile/TriangleFileTTR.h>

#include <algorithm>
#include <limits>
#include <string>

#include "model_samples.h"
#include "trifile/percent_recorder.h"

using model_samples::MemoryFile;

namespace {

// Makes the count of triangles visible.
class Ttr : public TriangleFileTTR {
  public:
    std::int32_t triangle_count() const { return m_triangle_count; }
};

int read_all(TriangleFile& file, giTriBlock& block) {
    int status = 0;
    while (status == 0) status = file.get_block(block);
    return status;
}

}  // namespace

TEST(TriangleFileTTR, header_has_120_bytes_with_the_count_at_84) {
    const std::string bytes = model_samples::ttr(model_samples::tetrahedron());
    EXPECT_EQ(bytes.size(), 120U + 4 * 36);
    TriangleFileTTR file;
    ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes)), 0);
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_EQ(model_samples::corners_of(block), model_samples::tetrahedron());
}

TEST(TriangleFileTTR, corners_are_not_shared) {
    TriangleFileTTR file;
    file.read_init(utPtrClaimed, new MemoryFile(model_samples::ttr(model_samples::tetrahedron())));
    giTriBlock block;
    read_all(file, block);
    EXPECT_EQ(model_samples::nodes_of(block).size(), 12U);
    EXPECT_EQ(block.size(), 2);
    EXPECT_EQ(file.get_block(block), 1);
}

TEST(TriangleFileTTR, box_is_that_of_the_triangles) {
    std::string bytes = model_samples::ttr({{-1, 2, 3, 4, 5, 6, 7, 8, -9}});
    std::fill(bytes.begin() + 88, bytes.begin() + 120, '\x42');
    TriangleFileTTR file;
    ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes)), 0);
    EXPECT_TRUE(file.get_box().is_empty());
    double corners[9];
    EXPECT_EQ(file.read_next(corners), 0);
    EXPECT_EQ(file.read_next(corners), 1);
    EXPECT_EQ(file.get_box().min(), giPoint3(-1, 2, -9));
    EXPECT_EQ(file.get_box().max(), giPoint3(7, 8, 6));
}

TEST(TriangleFileTTR, every_prefix_gives_its_whole_triangles) {
    const std::string bytes = model_samples::ttr(model_samples::tetrahedron());
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        TriangleFileTTR file;
        const int header = file.read_init(utPtrClaimed, new MemoryFile(bytes.substr(0, size)));
        ASSERT_EQ(header != 0, size < 120) << size;
        if (header != 0) continue;
        giTriBlock block;
        EXPECT_EQ(read_all(file, block), size < bytes.size() ? 3 : 1) << size;
        EXPECT_EQ(model_samples::triangles_of(block).size(), (size - 120) / 36) << size;
    }
}

TEST(TriangleFileTTR, whole_triangles_are_counted) {
    const std::string bytes = model_samples::ttr(model_samples::tetrahedron());
    Ttr file;
    ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes.substr(0, bytes.size() - 1))), 0);
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 3);
    EXPECT_EQ(file.triangle_count(), 3);
}

TEST(TriangleFileTTR, the_count_is_unsigned) {
    for (const std::uint32_t count : model_samples::forged_counts) {
        TriangleFileTTR file;
        const std::string bytes = model_samples::ttr(model_samples::tetrahedron(), count);
        ASSERT_EQ(file.read_init(utPtrClaimed, new MemoryFile(bytes)), 0);
        giTriBlock block;
        EXPECT_EQ(read_all(file, block), count <= 4 ? 1 : 3) << count;
        EXPECT_EQ(model_samples::triangles_of(block).size(), std::min(count, 4U)) << count;
    }
}

TEST(TriangleFileTTR, percent_is_shown_before_the_first_triangle_and_each_1000th) {
    TriangleFileTTR file;
    const PercentRecorder recorder(file);
    file.read_init(utPtrClaimed, new MemoryFile(model_samples::ttr(model_samples::grid(30))));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_EQ(recorder.percents, (std::vector<int>{0, 55}));
}

TEST(TriangleFileTTR, a_stop_before_the_first_triangle_delivers_nothing) {
    TriangleFileTTR file;
    const PercentRecorder recorder(file, 1);
    file.read_init(utPtrClaimed, new MemoryFile(model_samples::ttr(model_samples::tetrahedron())));
    giTriBlock block;
    EXPECT_EQ(file.get_block(block), 2);
    EXPECT_EQ(block.size(), 0);
}

TEST(TriangleFileTTR, nan_is_treated_as_in_stl) {
    constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
    TriangleFileTTR file;
    file.ignore_nan_triangles(1);
    file.read_init(
        utPtrClaimed,
        new MemoryFile(model_samples::ttr({{not_a_number, 9, 0, 0, 0, 0, 0, 0, 0}, {}})));
    giTriBlock block;
    EXPECT_EQ(read_all(file, block), 1);
    EXPECT_EQ(model_samples::triangles_of(block).size(), 1U);
    EXPECT_EQ(file.invalid_data_ignored(), 1);
    EXPECT_EQ(file.get_box().max(), giPoint3(0, 0, 0));
}

TEST(TriangleFileTTR, once_closed_is_at_the_end_of_the_data) {
    TriangleFileTTR file;
    double corners[9];
    file.read_init(utPtrClaimed, new MemoryFile(model_samples::ttr(model_samples::tetrahedron())));
    EXPECT_EQ(file.read_next(corners), 0);
    file.read_close();
    EXPECT_EQ(file.read_next(corners), 1);
}
