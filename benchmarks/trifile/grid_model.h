// grid_model.h: a model of a million triangles for the benchmarks, as a block and as files.
//
// The model is an open shell: a grid of squares of 0.5 with steps of 0.25 in height, two triangles
// a square, so that its coordinates are round and share their low bits. In the order of the grid,
// or shuffled.
#pragma once

#include <geometry/giTriBlock.h>
#include <nmknmt/nmkNMTFileMFC.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "stopwatch.h"

namespace grid_model {

/// Squares along each side of the grid: 999,698 triangles in a full run.
inline const int side = stopwatch::size(707, 20);

using Corner = std::array<float, 3>;
using Facet = std::array<Corner, 3>;

inline Corner corner_at(int i, int j) {
    return {static_cast<float>(i) * 0.5F, static_cast<float>(j) * 0.5F,
            static_cast<float>(i * j % 64) * 0.25F};
}

inline std::vector<Facet> facets() {
    std::vector<Facet> all;
    for (int i = 0; i < side; ++i) {
        for (int j = 0; j < side; ++j) {
            all.push_back({corner_at(i, j), corner_at(i + 1, j), corner_at(i + 1, j + 1)});
            all.push_back({corner_at(i, j), corner_at(i + 1, j + 1), corner_at(i, j + 1)});
        }
    }
    return all;
}

inline std::vector<Facet> shuffled_facets() {
    std::vector<Facet> all = facets();
    std::mt19937_64 random(12);
    // Not std::shuffle, whose order is up to the library.
    for (std::size_t i = all.size() - 1; i > 0; --i) std::swap(all[i], all[random() % (i + 1)]);
    return all;
}

inline std::string binary_stl(const std::vector<Facet>& all) {
    std::string bytes(84 + 50 * all.size(), '\0');
    const auto count = static_cast<std::uint32_t>(all.size());
    std::memcpy(bytes.data() + 80, &count, sizeof count);
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::memcpy(bytes.data() + 84 + 50 * i + 12, all[i].data(), sizeof all[i]);
    }
    return bytes;
}

inline std::string ttr(const std::vector<Facet>& all) {
    std::string bytes(120 + 36 * all.size(), '\0');
    const auto count = static_cast<std::uint32_t>(all.size());
    std::memcpy(bytes.data() + 84, &count, sizeof count);
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::memcpy(bytes.data() + 120 + 36 * i, all[i].data(), sizeof all[i]);
    }
    return bytes;
}

inline void put_vertex(std::string& text, const Corner& corner) {
    char line[100];
    std::snprintf(line, sizeof line, "      vertex %e %e %e\n", static_cast<double>(corner[0]),
                  static_cast<double>(corner[1]), static_cast<double>(corner[2]));
    text += line;
}

inline std::string text_stl(const std::vector<Facet>& all) {
    std::string text = "solid grid\n";
    for (const Facet& facet : all) {
        text += "  facet normal 0.000000e+00 0.000000e+00 1.000000e+00\n    outer loop\n";
        for (const Corner& corner : facet) put_vertex(text, corner);
        text += "    endloop\n  endfacet\n";
    }
    return text + "endsolid grid\n";
}

/// A text in the format ".tri" with one block of shared nodes.
inline std::string flue() {
    const int nodes = (side + 1) * (side + 1);
    std::string text = "grid\n * \n1\n1\n";
    text += "block\n\n\n0 0 " + std::to_string(nodes) + " " + std::to_string(2 * side * side);
    text += "\n\n\n\n\n\n\n\n\n";
    char line[100];
    for (int node = 0; node < nodes; ++node) {
        const Corner at = corner_at(node / (side + 1), node % (side + 1));
        std::snprintf(line, sizeof line, "%e %e %e\n\n", static_cast<double>(at[0]),
                      static_cast<double>(at[1]), static_cast<double>(at[2]));
        text += line;
    }
    for (int square = 0; square < side * side; ++square) {
        const int first = square / side * (side + 1) + square % side + 1;
        const int next = first + side + 1;
        std::snprintf(line, sizeof line, "%d %d %d\n%d %d %d\n", first, next, next + 1, first,
                      next + 1, first + 1);
        text += line;
    }
    return text;
}

/// A block whose triangles have nodes of their own.
inline std::unique_ptr<giTriBlock> unshared_block(const std::vector<Facet>& all) {
    auto block = std::make_unique<giTriBlock>();
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    block->add(nodes);
    block->add(triangles);
    for (const Facet& facet : all) {
        const int first = nodes->size();
        for (const auto& [x, y, z] : facet) {
            nodes->add({static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)});
        }
        triangles->add({first, first + 1, first + 2});
    }
    return block;
}

/// Goes on, whatever is reported.
struct NoProgress : nmkProgressBreak {};

/// A file in the directory for temporary files, which is removed at the end.
class TemporaryFile {
  public:
    TemporaryFile(std::string_view bytes, std::string_view extension) {
        m_name = (std::filesystem::temp_directory_path() / "nmk_benchmark_XXXXXX").string();
        m_name += extension;
        const int descriptor = ::mkstemps(m_name.data(), static_cast<int>(extension.size()));
        std::FILE* const file = descriptor >= 0 ? ::fdopen(descriptor, "wb") : nullptr;
        const bool is_written = file != nullptr &&
                                std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
                                std::fclose(file) == 0;
        if (is_written) return;
        std::fprintf(stderr, "cannot write %s\n", m_name.c_str());
        std::exit(1);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::remove(m_name.c_str()); }

    const char* name() const { return m_name.c_str(); }

  private:
    std::string m_name;
};

/// The bytes of a whole file, read at once.
struct WholeFile {
    explicit WholeFile(const char* name) {
        std::FILE* const file = std::fopen(name, "rb");
        if (file == nullptr) return;
        size = static_cast<std::size_t>(std::filesystem::file_size(name));
        bytes.reset(new char[size]);
        size = std::fread(bytes.get(), 1, size, file);
        std::fclose(file);
    }

    const char* begin() const { return bytes.get(); }
    const char* end() const { return bytes.get() + size; }

    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
};

}  // namespace grid_model
