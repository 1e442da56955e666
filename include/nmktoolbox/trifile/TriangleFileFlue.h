// TriangleFileFlue: reads ".tri", the text format of an older system.
//
// A header, then blocks, each with a name, a list of nodes and a list of triangles. A line longer
// than 99 bytes counts as several.
//
//     any number of lines, up to one whose second character is "*"
//     the number of blocks
//     (blocks - 1) / 5 + 1 lines that are skipped, at least one
//     for each block:
//         its name
//         2 lines that are skipped
//         normals flag (1: the nodes have normals), a number not used, nodes, triangles
//         8 lines that are skipped
//         for each node 2 lines: x y z, and with normals the normal's x; the normal's y and z
//         for each triangle the numbers of its nodes in the block, from 1
//
// Memory is not allocated ahead of what the file can hold. Every operation returns a status of
// TriangleFile; after a failure the reader is only good for closing, and every further read returns
// the same.
#pragma once

#include <nmktoolbox/export.h>
#include <stlfile/TriangleFile.h>
#include <utils/utString.h>

#include <cstdint>
#include <vector>

class NMKTOOLBOX_EXPORT TriangleFileFlue : public TriangleFile {
  public:
    /// With 0 normals are not read. They end for the rest of the file with the first block that has
    /// none, and with the first normal that is not a unit vector.
    explicit TriangleFileFlue(int with_normals);
    ~TriangleFileFlue() override;

    /// Reads block by block, triangle by triangle.
    int read_next(double* const corners) override;

    /// Appends the next block, with its name as nmkGiTriData. Where the block has no normals, those
    /// that `block` has are removed.
    int get_block(giTriBlock& block) override;

    /// Reads the next block without copying it. The pointers are set to null first, and the arrays
    /// are the reader's, until the next block is read.
    ///
    ///   nodes, normals   3 doubles a node; `normals` is null where the block has none
    ///   triangles        3 numbers a triangle, as in the file, from 1
    ///   the counts       left as they are unless 0 is returned
    int get_block(double const** nodes, double const** normals, int* node_count,
                  int const** triangles, int* triangle_count);
    int get_block(double const** nodes, int* node_count, int const** triangles,
                  int* triangle_count);

    /// Each block counts an equal part of 100, and the part of the current one comes on top also
    /// when it is complete: 100 after the first of two blocks, 150 after the second, and 200 after
    /// an only block.
    int percent_read() const override;

  private:
    int read_header() override;
    void read_tidy() override;

    int read_block();
    int read_block_parts();
    int read_block_head();
    void reserve();
    int read_nodes();
    int read_node(bool& has_normals);
    int read_triangles();
    int read_triangle();
    bool read_line();
    bool skip_lines(int count);
    bool scan(double* values, int count) const;
    bool scan(int* values, int count) const;
    int count_item();

    std::int32_t m_block_count = 0;  // in the file
    std::int32_t m_blocks_read = 0;
    std::vector<std::int32_t> m_triangles;  // 3 a triangle, from 1
    std::int32_t m_triangles_in_block = 0;
    std::int32_t m_next_triangle = 0;  // for read_next
    std::vector<double> m_nodes;       // 3 a node
    std::vector<double> m_normals;     // 3 a node; empty where the block has none
    std::int32_t m_nodes_in_block = 0;
    std::int64_t m_items_read = 0;  // nodes and triangles of the current block
    std::int64_t m_items_in_block = 0;
    std::int32_t m_with_normals;  // cleared for good
    utString m_block_name;
    int m_failure = 0;  // the status of the block that failed
    char m_line[100];
};
