#include <gtest/gtest.h>
#include <nmknmt/nmkNMTFileRead.h>
#include <nmknmt/nmkNMTFileWrite.h>

#include <memory>
#include <string>

#include "model_samples.h"

using model_samples::MemoryFile;
using model_samples::put;

namespace {

struct Header {
    const char* title = nullptr;
    int blocks = -1;
    int nodes = -1;
    int triangles = -1;
};

int read_header(nmkNMTFileRead& reader, Header& header) {
    return reader.read_header(&header.title, &header.blocks, &header.nodes, &header.triangles);
}

// What a writer writes into memory.
template <class Write>
std::string written(const Write& write) {
    const CFilecoPrf memory(new CMemFile);
    nmkNMTFileMFC file(memory);
    nmkNMTFileWrite writer(file);
    EXPECT_EQ(write(writer), 0);
    EXPECT_EQ(file.close(), 0);
    const auto bytes = static_cast<const CMemFile&>(*memory).bytes();
    return {bytes.begin(), bytes.end()};
}

std::string one_block() {
    return written([](nmkNMTFileWrite& writer) {
        int failed = writer.write_header("title", true, 1, 1, 1);
        failed |= writer.write_block(1, 1, true, 4);
        failed |= writer.write_node({1, 2, 3}, {0, 0, 1});
        return failed | writer.write_tri({0, 0, 0});
    });
}

// A header of the layout, with numbers of the test's.
std::string header(std::uint32_t version, std::uint32_t units, std::uint32_t blocks,
                   std::uint32_t title_size) {
    std::string bytes = "NMTF";
    for (const std::uint32_t number : {version, units, blocks, 0U, 0U, title_size}) {
        put(bytes, number);
    }
    return bytes;
}

int status_of_header(const std::string& bytes) {
    MemoryFile file(bytes);
    nmkNMTFileRead reader(&file);
    Header read;
    return read_header(reader, read);
}

}  // namespace

TEST(nmkNMTFileRead, reads_what_was_written) {
    MemoryFile file(one_block());
    nmkNMTFileRead reader(&file);
    Header read;
    EXPECT_EQ(reader.is_mm(), 0);
    ASSERT_EQ(read_header(reader, read), 0);
    EXPECT_STREQ(read.title, "title");
    EXPECT_EQ(read.blocks, 1);
    EXPECT_EQ(read.nodes, 1);
    EXPECT_EQ(read.triangles, 1);
    EXPECT_EQ(reader.is_mm(), 1);
    int nodes = 0;
    int triangles = 0;
    int has_normals = 0;
    ASSERT_EQ(reader.read_block(&nodes, &triangles, &has_normals), 0);
    EXPECT_EQ(nodes + triangles + has_normals, 3);
    int colour = -1;
    EXPECT_EQ(reader.read_colour(colour), 0);
    EXPECT_EQ(colour, 4);
    giPoint3 point;
    giVector3 normal;
    ASSERT_EQ(reader.read_node(point, normal), 0);
    EXPECT_EQ(point, giPoint3(1, 2, 3));
    EXPECT_EQ(normal, giVector3(0, 0, 1));
    giTriangle triangle;
    ASSERT_EQ(reader.read_tri(triangle), 0);
    EXPECT_EQ(triangle, giTriangle(0, 0, 0));
    EXPECT_EQ(reader.read_tri(triangle), 1);
    EXPECT_EQ(reader.read_block(&nodes, &triangles, &has_normals), 1);
}

TEST(nmkNMTFileRead, leaves_the_colour_of_a_block_without_one) {
    MemoryFile file(written([](nmkNMTFileWrite& writer) {
        return writer.write_header("", false, 1, 0, 0) | writer.write_block(0, 0, false, -1);
    }));
    nmkNMTFileRead reader(&file);
    Header read;
    ASSERT_EQ(read_header(reader, read), 0);
    EXPECT_EQ(reader.is_mm(), 0);
    int counts[3];
    ASSERT_EQ(reader.read_block(&counts[0], &counts[1], &counts[2]), 0);
    int colour = 77;
    EXPECT_EQ(reader.read_colour(colour), 0);
    EXPECT_EQ(colour, 77);
}

TEST(nmkNMTFileRead, refuses_headers_that_are_not_of_the_layout) {
    EXPECT_EQ(status_of_header(header(1, 1, 0, 0)), 0);
    EXPECT_EQ(status_of_header("X" + header(1, 1, 0, 0)), 1);
    EXPECT_EQ(status_of_header(header(2, 1, 0, 0)), 1);
    EXPECT_EQ(status_of_header(header(1, 2, 0, 0)), 1);
    EXPECT_EQ(status_of_header(header(1, 1, 0x7FFFFFFF, 0)), 0);
    EXPECT_EQ(status_of_header(header(1, 1, 0x80000000, 0)), 1);
    EXPECT_EQ(status_of_header(header(1, 1, 0, 1)), 1);
    EXPECT_EQ(status_of_header(header(1, 1, 0, 0xFFFFFFFF) + std::string(5000, 'x')), 1);
}

TEST(nmkNMTFileRead, refuses_counts_and_flags_of_a_block_that_are_not_of_the_layout) {
    for (const auto& [nodes, flags, status] :
         {std::tuple(0x7FFFFFFFU, 0U, 0), std::tuple(0x80000000U, 0U, 1), std::tuple(0U, 4U, 1)}) {
        std::string bytes = header(1, 1, 1, 0);
        for (const std::uint32_t number : {nodes, 0U, flags, 0U}) put(bytes, number);
        MemoryFile file(bytes);
        nmkNMTFileRead reader(&file);
        Header read;
        ASSERT_EQ(read_header(reader, read), 0);
        int counts[3] = {77, 77, 77};
        EXPECT_EQ(reader.read_block(&counts[0], &counts[1], &counts[2]), status);
        EXPECT_EQ(counts[1], status == 0 ? 0 : 77);
    }
}

TEST(nmkNMTFileRead, of_a_null_file_reads_nothing) {
    nmkNMTFileRead reader(nullptr);
    Header read;
    giPoint3 point;
    EXPECT_EQ(read_header(reader, read), 1);
    EXPECT_EQ(reader.read_node(point), 1);
}

TEST(nmkNMTFileWrite, writes_blocks_with_and_without_normals) {
    giTriBlock first;
    model_samples::add_node(first, {1, 2, 3});
    model_samples::add_triangle(first, {0, 0, 0});
    giNormArrcoFeature normals;
    first.add(normals);
    normals->add({0, 0, 1});
    const giTriBlock second;
    const giTriBlock* const blocks[] = {&first, &second};
    MemoryFile file(
        written([&](nmkNMTFileWrite& writer) { return writer.write_file("two", true, blocks); }));
    nmkNMTFileRead reader(&file);
    Header read;
    ASSERT_EQ(read_header(reader, read), 0);
    EXPECT_EQ(read.blocks, 2);
    int counts[3];
    ASSERT_EQ(reader.read_block(&counts[0], &counts[1], &counts[2]), 0);
    EXPECT_EQ(counts[2], 1);
    giPoint3 point;
    giVector3 normal;
    giTriangle triangle;
    EXPECT_EQ(reader.read_node(point, normal) | reader.read_tri(triangle), 0);
    ASSERT_EQ(reader.read_block(&counts[0], &counts[1], &counts[2]), 0);
    EXPECT_EQ(counts[0] + counts[1] + counts[2], 0);
}

TEST(nmkNMTFileWrite, reports_a_file_that_takes_nothing) {
    nmkNMTFileMFC closed{CFilecoPrf()};
    nmkNMTFileWrite writer(closed);
    EXPECT_EQ(writer.write_header("", true, 0, 0, 0), 1);
    const giTriBlock block;
    const giTriBlock* const blocks[] = {&block};
    EXPECT_EQ(writer.write_file("", true, blocks), 1);
}
