// flue_samples.h: texts in the format ".tri".
#pragma once

#include <string>
#include <vector>

namespace flue_samples {

/// One block: the lines that the format skips are "skipped".
struct Block {
    std::string name = "block";
    int has_normals = 0;
    std::vector<std::string> nodes = {"0 0 0", "", "1 0 0", "", "0 1 0", ""};  // two lines a node
    std::vector<std::string> triangles = {"1 2 3"};
};

/// A block whose nodes have normals; the first one's is (0, 0, z).
inline Block with_normals(const std::string& z = "1") {
    return {"normals", 1, {"0 0 0 0", "0 " + z, "1 0 0 0", "0 1", "0 1 0 0", "0 1"}, {"1 2 3"}};
}

/// The lines of a block, which counts its nodes and triangles.
inline std::vector<std::string> lines_of(const Block& block) {
    std::vector<std::string> lines = {block.name, "skipped", "skipped"};
    lines.push_back(std::to_string(block.has_normals) + " 0 " +
                    std::to_string(block.nodes.size() / 2) + " " +
                    std::to_string(block.triangles.size()));
    lines.insert(lines.end(), 8, "skipped");
    lines.insert(lines.end(), block.nodes.begin(), block.nodes.end());
    lines.insert(lines.end(), block.triangles.begin(), block.triangles.end());
    return lines;
}

inline std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

/// A header for so many blocks, with as many index lines as they take.
inline std::string header(int blocks) {
    std::vector<std::string> lines = {"a line", " * the mark", std::to_string(blocks)};
    lines.insert(lines.end(), static_cast<std::size_t>((blocks - 1) / 5 + 1), "index");
    return joined(lines);
}

inline std::string file(const std::vector<Block>& blocks) {
    std::string text = header(static_cast<int>(blocks.size()));
    for (const Block& block : blocks) text += joined(lines_of(block));
    return text;
}

/// A block of so many nodes and triangles, all of them alike.
inline Block large(int nodes, int triangles) {
    Block block{"large", 0, {}, {}};
    for (int i = 0; i < nodes; ++i) {
        block.nodes.push_back(std::to_string(i) + " 0 0");
        block.nodes.emplace_back();
    }
    block.triangles.assign(static_cast<std::size_t>(triangles), "1 2 3");
    return block;
}

}  // namespace flue_samples
