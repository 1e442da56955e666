// nmkTriFileNMT: reads ".nmt" and ".nmlmt", block by block or number by number.
//
// A file in millimetres is converted to the units in force; one in inches is not. Every operation
// returns a status of TriangleFile. To read without blocks in memory:
//
//     while (file.next_block() == 0) {
//         while (file.next_node(point, normal, &has_normal) == 0) ...
//         while (file.next_triangle(triangle) == 0) ...
//     }
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giTriangle.h>
#include <geometry/giVector3.h>
#include <nmktoolbox/export.h>
#include <stlfile/TriangleFile.h>

#include <cstdint>
#include <memory>

class nmkNMTFileRead;

class NMKTOOLBOX_EXPORT nmkTriFileNMT : public TriangleFile {
  public:
    /// With 0 normals are read and tested, but not handed on.
    explicit nmkTriFileNMT(int with_normals);
    ~nmkTriFileNMT() override;

    /// Not offered for this format: returns 1 without reading.
    int read_next(double* const corners) override;

    /// Appends the next block, with its colour as nmkGiTriBlockColour where it has one of at least
    /// 0. The first node without a normal removes the normals of `block`, also those of earlier
    /// blocks. What was appended before a failure stays.
    int get_block(giTriBlock& block) override;

    /// Nodes and triangles in hundredths of those that the header counts.
    int percent_read() const override;

    /// Begins the next block. `colour` is set to the block's colour, -1 without one.
    int next_block();
    int next_block(int& colour);

    /// The next node of the block; 1, with the arguments unchanged, behind the last one.
    ///
    ///   point       in the units in force
    ///   normal      as in the file; unchanged where the block has none
    ///   has_normal  1 where normals are wanted and the block has them, else 0
    ///
    /// 3 also for an x that is plus or minus the largest double, for a y or z that is the largest,
    /// and for a normal whose x is minus the largest.
    int next_node(giPoint3& point, giVector3& normal, int* has_normal);

    /// The next triangle of the block; 1 behind the last one, 3 for an index outside the block.
    int next_triangle(giTriangle& triangle);

  private:
    int read_header() override;

    int read_colour_into(giTriBlock& block);
    int read_nodes_into(giTriBlock& block);
    int read_triangles_into(giTriBlock& block, int node_base);
    int read_good_triangle(giTriangle& triangle);
    int check_break();

    std::unique_ptr<nmkNMTFileRead> m_raw;  // null until the header is read
    double m_scale = 1.0;
    std::int32_t m_with_normals;
    std::int64_t m_total_items = 0;  // nodes and triangles of the file
    std::int64_t m_items_read = 0;
    std::int32_t m_block_count = 0;  // in the file
    std::int32_t m_blocks_read = 0;
    std::int32_t m_triangles_in_block = 0;
    std::int32_t m_triangles_read = 0;
    std::int32_t m_nodes_in_block = 0;
    std::int32_t m_nodes_read = 0;
    std::int32_t m_block_has_normals = 0;
};
