// nmt_samples.h: files in the format ".nmt", as bytes.
#pragma once

#include <nmknmt/nmkNMTFileWrite.h>

#include <functional>
#include <string>

#include "model_samples.h"

namespace nmt_samples {

/// What is written through a writer.
inline std::string written(const std::function<int(nmkNMTFileWrite&)>& write) {
    const CFilecoPrf memory(new CMemFile);
    nmkNMTFileMFC file(memory);
    nmkNMTFileWrite writer(file);
    write(writer);
    file.close();
    const auto bytes = static_cast<const CMemFile&>(*memory).bytes();
    return {bytes.begin(), bytes.end()};
}

/// One block: a triangle in the plane z = 0, its first node at `first`, its last node's normal
/// (normal_x, 0, 1).
struct Block {
    bool has_normals = false;
    int colour = -1;
    giPoint3 first = {0, 0, 0};
    giTriangle triangle = {0, 1, 2};
    double normal_x = 0.0;
};

inline int write_block(nmkNMTFileWrite& writer, const Block& block) {
    int failed = writer.write_block(3, 1, block.has_normals, block.colour);
    const giPoint3 nodes[] = {block.first, {1, 0, 0}, {0, 1, 0}};
    for (int i = 0; i < 3; ++i) {
        const giVector3 normal(i == 2 ? block.normal_x : 0.0, 0, 1);
        failed |=
            block.has_normals ? writer.write_node(nodes[i], normal) : writer.write_node(nodes[i]);
    }
    return failed | writer.write_tri(block.triangle);
}

inline std::string file(const std::vector<Block>& blocks, bool is_mm = true) {
    return written([&](nmkNMTFileWrite& writer) {
        const auto count = static_cast<int>(blocks.size());
        int failed = writer.write_header("sample", is_mm, count, 3 * count, count);
        for (const Block& block : blocks) failed |= write_block(writer, block);
        return failed;
    });
}

/// One block of so many nodes, all different, and triangles, all alike.
inline std::string large(int nodes, int triangles) {
    return written([&](nmkNMTFileWrite& writer) {
        writer.write_header("", true, 1, nodes, triangles);
        writer.write_block(nodes, triangles, false, -1);
        for (int i = 0; i < nodes; ++i) writer.write_node({static_cast<double>(i), 0, 0});
        for (int i = 0; i < triangles; ++i) writer.write_tri({0, 1, 2});
        return 0;
    });
}

}  // namespace nmt_samples
