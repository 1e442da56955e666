// model_reading.h: bytes read as a triangle model of one format, in every way that there is.
#pragma once

#include <nmktoolbox/trifile.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "model_samples.h"

namespace model_reading {

inline void require(bool condition) {
    if (!condition) std::abort();
}

class Maker : public nmkNMTFileMaker {
  public:
    explicit Maker(std::string_view bytes) : nmkNMTFileMaker("model"), m_bytes(bytes) {}

  protected:
    std::unique_ptr<nmkNMTFile> create_basic_nmt_file() override {
        return std::make_unique<model_samples::MemoryFile>(m_bytes);
    }

  private:
    std::string_view m_bytes;
};

inline int count_edge(const giPoint3&, const giPoint3&, void* data) {
    ++*static_cast<std::size_t*>(data);
    return 0;
}

/// Whether the indices are in the block, and whether its triangles can be bounded and written.
inline void check_block(giTriBlock& block) {
    const auto nodes = static_cast<std::int32_t>(model_samples::nodes_of(block).size());
    const std::vector<giTriangle> triangles = model_samples::triangles_of(block);
    for (const giTriangle& triangle : triangles) {
        for (int k = 0; k < 3; ++k) require(triangle[k] >= 0 && triangle[k] < nodes);
    }
    std::size_t edges = 0;
    nmkTriBoundary boundary(&block);
    require(boundary.visit(count_edge, &edges) == 0);
    require(edges <= 3 * triangles.size());
    const CFilecoPrf memory(new CMemFile);
    nmkNMTFileMFC file(memory);
    nmkSTLFileWrite writer(&file);
    require(writer.write_triblock(block) == 0 && writer.write_end() == 0 && file.close() == 0);
    require(memory->GetLength() == 84 + 50 * triangles.size());
}

/// Reads the bytes under the name; `bytes_of_a_triangle` is the least that one takes in the file.
inline void read_model(const char* name, std::string_view bytes, std::size_t bytes_of_a_triangle) {
    for (const int flags : {0, 1, 2, 3}) {
        Maker maker(bytes);
        nmkProgressBreak* const progress = [] {
            static class Silent : public nmkProgressBreak {
            } silent;
            return &silent;
        }();
        nmkTriFileReader reader(name, *progress, flags & 1, flags >> 1, 2.0, maker);
        reader.ignore_nan_triangles(flags & 1);
        giTriBlock block;
        const int status = reader.get_block(&block);
        require(status == 1 || status == 3);
        require(model_samples::triangles_of(block).size() * bytes_of_a_triangle <= bytes.size());
        check_block(block);
        Maker other(bytes);
        nmkTriFileReader lister(name, *progress, flags & 1, flags >> 1, 2.0, other);
        giTriBlockcoSListPtrcoPtrcoSList list;
        const int listed = lister.get_blocks(&list);
        require(listed == 1 || (listed == 3 && list.size() == 0));
        for (giTriBlock* each : list) {
            check_block(*each);
            delete each;
        }
    }
}

}  // namespace model_reading
