// nmkNMTFileWrite: writes an NMT file, whose layout nmkNMTFileRead.h describes.
//
// The caller writes a header, then for each block the block, its nodes and its triangles, as many
// of each as were counted; nothing checks that. Every operation returns 0, or 1 where the file did
// not take the bytes.
#pragma once

#include <geometry/giTriBlock.h>
#include <stlfile/apINMKFile.h>

#include <cstdint>
#include <span>
#include <string_view>

#pragma GCC visibility push(default)

class nmkNMTFileWrite {
  public:
    /// Writes to the file, which is borrowed.
    explicit nmkNMTFileWrite(apINMKFile& file) noexcept : m_file(file) {}

    /// The counts are those of the whole file. A title is cut behind 4096 bytes.
    int write_header(std::string_view title, bool is_mm, std::int32_t blocks, std::int32_t nodes,
                     std::int32_t triangles);

    /// Begins a block; a colour below 0 is none.
    int write_block(std::int32_t nodes, std::int32_t triangles, bool has_normals,
                    std::int32_t colour);

    int write_node(const giPoint3& point);
    int write_node(const giPoint3& point, const giVector3& normal);
    int write_tri(const giTriangle& triangle);

    /// Writes a whole file: a header and the blocks, with normals where a block has as many as
    /// nodes, without colours. Also 1 where the nodes or triangles of all blocks are more than
    /// 2^31 - 1.
    int write_file(std::string_view title, bool is_mm, std::span<const giTriBlock* const> blocks);

  private:
    int write_one(const giTriBlock& block);
    int write(const void* bytes, std::size_t size);

    apINMKFile& m_file;
};

#pragma GCC visibility pop
