// triangle_files_benchmark: a million triangles read from each kind of file, and written, beside
// bare loops over the whole file in memory.
//
// All happens in the directory for temporary files (TMPDIR). Ours and the peer take turns; each
// time is the least of several, on a processor, so that other work on the machine counts little.

#include <nmktoolbox/trifile.h>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>

#include "trifile/bare_mesh.h"
#include "trifile/grid_model.h"

namespace {

constexpr int turns = 7;

constexpr double target_of_binary = 1.3;
constexpr double target_of_text = 1.5;
constexpr double target_of_flue = 2.0;
constexpr double target_of_writing = 3.0;

bare::Block read_model(const std::string& name) {
    grid_model::NoProgress progress;
    nmkTriFileReader reader(name.c_str(), progress, 0, 1, 1.0);
    bare::Block read{std::make_unique<giTriBlock>()};
    if (reader.get_block(read.block.get()) != 1) read.block.reset();
    return read;
}

// The peers take the bytes as they are known to be, without a check.

bare::Mesh scan_binary(const char* name) {
    const grid_model::WholeFile file(name);
    bare::Mesh mesh;
    for (const char* facet = file.begin() + 84; facet < file.end(); facet += 50) {
        float values[9];
        std::memcpy(values, facet + 12, sizeof values);
        double corners[9];
        for (int i = 0; i < 9; ++i) corners[i] = static_cast<double>(values[i]);
        mesh.add_triangle(corners);
    }
    return mesh;
}

template <class Number>
const char* scan(const char* at, const char* end, Number* values, int count) {
    for (int i = 0; i < count; ++i) {
        while (*at == ' ') ++at;
        at = std::from_chars(at, end, values[i]).ptr;
    }
    return at;
}

const char* line_behind(const char* at, const char* end) {
    return static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at))) + 1;
}

bare::Mesh scan_text(const char* name) {
    constexpr std::string_view vertex = "      vertex ";
    const grid_model::WholeFile file(name);
    bare::Mesh mesh;
    double corners[9];
    int read = 0;
    for (const char* line = file.begin(); line < file.end(); line = line_behind(line, file.end())) {
        if (std::memcmp(line, vertex.data(),
                        std::min<std::size_t>(vertex.size(),
                                              static_cast<std::size_t>(file.end() - line))) != 0) {
            continue;
        }
        line = scan(line + vertex.size(), file.end(), corners + read, 3);
        read += 3;
        if (read < 9) continue;
        mesh.add_triangle(corners);
        read = 0;
    }
    return mesh;
}

bare::Mesh scan_flue(const char* name) {
    constexpr int lines_before_the_counts = 7;
    constexpr int lines_before_the_nodes = 9;
    const grid_model::WholeFile file(name);
    bare::Mesh mesh;
    const char* line = file.begin();
    const auto skip = [&](int count) {
        for (int i = 0; i < count; ++i) line = line_behind(line, file.end());
    };
    skip(lines_before_the_counts);
    int counts[4];
    scan(line, file.end(), counts, 4);
    skip(lines_before_the_nodes);
    for (int i = 0; i < counts[2]; ++i) {
        mesh.nodes.emplace_back();
        line = scan(line, file.end(), mesh.nodes.back().data(), 3);
        skip(2);
    }
    for (int i = 0; i < counts[3]; ++i) {
        bare::Mesh::Triangle triangle;
        line = scan(line, file.end(), triangle.data(), 3);
        skip(1);
        mesh.triangles.push_back({triangle[0] - 1, triangle[1] - 1, triangle[2] - 1});
    }
    return mesh;
}

using Scan = bare::Mesh (*)(const char*);

bool measure_reading(const char* what, const char* extension, const std::string& bytes, Scan scan,
                     double target) {
    const grid_model::TemporaryFile file(bytes, extension);
    const auto taken = stopwatch::processor_in_turns(
        turns, [&] { return read_model(file.name()); }, [&] { return scan(file.name()); });
    return stopwatch::report(what, taken.ours, taken.peer, target, taken.same);
}

std::string write_model(const giTriBlock& block, const char* name) {
    nmkNMTFileMFC file(utString(name), apNMKModeWrite);
    nmkSTLFileWrite writer{utObserverPtr<nmkNMTFile>(&file)};
    const bool is_written =
        (writer.write_header("grid") | writer.write_triblock(block) | writer.write_end()) == 0;
    return is_written && file.close() == 0 ? name : "failed";
}

std::string write_bytes(const std::string& bytes, const char* name) {
    std::FILE* const file = std::fopen(name, "wb");
    if (file == nullptr) return "cannot be opened";
    const bool is_written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && is_written ? name : "failed";
}

bool measure_writing(const char* what, const std::vector<grid_model::Facet>& facets) {
    const std::unique_ptr<giTriBlock> block = grid_model::unshared_block(facets);
    const grid_model::TemporaryFile file({}, ".stl");
    const std::string name = write_model(*block, file.name());
    const grid_model::WholeFile ready(name.c_str());
    const std::string bytes(ready.begin(), ready.end());
    const auto taken = stopwatch::processor_in_turns(
        turns, [&] { return write_model(*block, file.name()); },
        [&] { return write_bytes(bytes, file.name()); });
    // The triangles, but not the normals, are those of the facets.
    const bool same = taken.same && read_model(name) == scan_binary(name.c_str()) &&
                      bytes.size() == 84 + 50 * facets.size();
    return stopwatch::report(what, taken.ours, taken.peer, target_of_writing, same);
}

}  // namespace

int main() {
    std::printf("%-44s %11s %11s %9s\n", "name", "ours_s", "peer_s", "ratio");
    const auto grid = grid_model::facets();
    const auto shuffled = grid_model::shuffled_facets();
    bool reached = measure_reading("binary STL, a grid of 1e6", ".stl",
                                   grid_model::binary_stl(grid), scan_binary, target_of_binary);
    reached &= measure_reading("binary STL, 1e6 shuffled", ".stl", grid_model::binary_stl(shuffled),
                               scan_binary, target_of_binary);
    reached &= measure_reading("text STL, a grid of 1e6", ".stl", grid_model::text_stl(grid),
                               scan_text, target_of_text);
    reached &= measure_reading("text STL, 1e6 shuffled", ".stl", grid_model::text_stl(shuffled),
                               scan_text, target_of_text);
    reached &= measure_reading("Flue, a grid of 1e6", ".tri", grid_model::flue(), scan_flue,
                               target_of_flue);
    reached &= measure_writing("STL written, a grid of 1e6", grid);
    reached &= measure_writing("STL written, 1e6 shuffled", shuffled);
    return reached ? 0 : 1;
}
