// TriangleFileSTL: reads STL, binary and text.
//
// A file is binary when it holds at least 84 + 50 n bytes, n being the number in the 4 bytes at
// offset 80 (little-endian), whatever its header says and however many bytes follow. Any other file
// is text when "solid" comes first behind white space, and else a binary one that is cut.
//
// One file gives one block. Corners at exactly equal places share a node, across all solids of a
// text; degenerate triangles are kept; normals, names, colours and attributes are not read. In a
// text, case, white space and line ends do not matter, and a name ends with its line. A text that
// ends before its last "endsolid" is cut. A file that is cut ends with status 3 behind its last
// whole triangle; one whose header is cut cannot be opened.
#pragma once

#include <geometry/giColour.h>
#include <stlfile/TriangleFile.h>
#include <stlfile/slfINodeUnduplicator.h>

#include <cstdint>
#include <memory>

#pragma GCC visibility push(default)

namespace nmk_stlfile {
class BinaryFacets;
class TextFacets;
}  // namespace nmk_stlfile

class TriangleFileSTL : public TriangleFile {
  public:
    /// The unduplicator is borrowed and cleared at the start of a block; with null each corner gets
    /// a node of its own.
    explicit TriangleFileSTL(slfINodeUnduplicator* unduplicator);
    ~TriangleFileSTL() override;

    int read_next(double* const corners) override;

    /// The length of a binary file with so many triangles and nothing behind them: 84 + 50 n.
    static std::int64_t binary_length(std::uint32_t triangles);

    /// Whether a file of this length is binary, `count` being the number at offset 80.
    static bool is_binary(std::int64_t length, std::uint32_t count) {
        return length >= binary_length(count);
    }

    /// Appends all triangles that are left; 1 where none is left. A block whose triangles end in a
    /// failure keeps those before it.
    int get_block(giTriBlock& block) override;

    /// Triangles of a binary file, bytes of a text, in hundredths of all.
    int percent_read() const override;

  protected:
    /// The next 1 or 4 bytes, little-endian. Each returns 0, or 3 where they cannot be read, and
    /// then leaves its argument as it was.
    int b_read_char(char* value);
    int b_read_ulong(unsigned long* value);
    int b_read_float(float* value);

    std::uint32_t m_triangles_in_file = 0;
    std::uint32_t m_triangles_read = 0;

  private:
    struct Batch;

    int read_header() override;
    void read_tidy() override;

    /// Reads one triangle, merges it into the box and counts it. Returns a status.
    ///
    ///   flag    set to non-zero where the triangle has a colour: never in this format
    ///   colour  the colour, left as it is without one
    virtual int read_next(double* const corners, int& flag, giColour& colour);

    int read_kept(double* const corners);
    int read_batch(Batch& batch);
    int binary_triangles(std::uint32_t& count);

    slfINodeUnduplicator* m_unduplicator;
    std::unique_ptr<nmk_stlfile::BinaryFacets> m_binary;  // null for a text
    std::unique_ptr<nmk_stlfile::TextFacets> m_text;      // null for a binary file
};

#pragma GCC visibility pop
