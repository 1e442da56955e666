// nmkNMTFileRead: reads the records of an NMT file, one after the other.
//
// An NMT file holds blocks of triangles. All numbers are little-endian; a count is 32 bits wide and
// at most 2^31 - 1.
//
//     offset  size  header
//          0     4  the letters "NMTF"
//          4     4  version of the layout: 1
//          8     4  units: 0 inches, 1 millimetres
//         12     4  number of blocks
//         16     4  number of nodes in all blocks
//         20     4  number of triangles in all blocks
//         24     4  bytes of the title, at most 4096
//         28        title, UTF-8
//
// Then each block:
//
//          0     4  number of nodes
//          4     4  number of triangles
//          8     4  flags: 1 the nodes have normals, 2 the block has a colour; others are 0
//         12     4  colour, signed; 0 without one
//         16        nodes: x y z as doubles, with normals followed by x y z of the normal
//                   triangles: three signed 32-bit indices of nodes of the block, from 0
//
// Every operation returns 0, or 1 where the bytes are missing or not as described. The indices are
// not checked here. Nothing is allocated for counts.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giTriangle.h>
#include <geometry/giVector3.h>
#include <stlfile/apINMKFile.h>

#include <cstdint>
#include <string>

#pragma GCC visibility push(default)

class nmkNMTFileRead {
  public:
    /// Reads from the file, which is borrowed and may be null.
    explicit nmkNMTFileRead(apINMKFile* file) noexcept : m_file(file) {}

    /// Reads the header from the beginning of the file; what `title` points at is valid as long as
    /// this. On failure the arguments are unchanged.
    int read_header(char const** title, int* blocks, int* nodes, int* triangles);

    /// Non-zero where the file is in millimetres; 0 before the header has been read.
    int is_mm() const noexcept { return m_is_mm; }

    /// Begins the next block. On failure the arguments are unchanged.
    int read_block(int* nodes, int* triangles, int* has_normals);

    /// Sets the colour of the block; leaves it as it is where the block has none. Returns 0.
    int read_colour(int& colour) const noexcept;

    /// The next node, of a block without normals, or with them.
    int read_node(giPoint3& point);
    int read_node(giPoint3& point, giVector3& normal);

    /// The next triangle.
    int read_tri(giTriangle& triangle);

  private:
    bool read(void* bytes, std::size_t size);

    apINMKFile* m_file;
    std::string m_title;
    int m_is_mm = 0;
    bool m_has_colour = false;
    std::int32_t m_colour = 0;
};

#pragma GCC visibility pop
