// readme_example: the README's program and its output, compared with the files that are tested.
#include <optional>

#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace {

struct Block {
    std::string mark;  // what is written after the opening fence
    std::string text;
};

std::vector<Block> blocks_of(const std::string& text) {
    std::vector<Block> blocks;
    bool inside = false;
    for (const std::string& line : lines_of(text)) {
        if (line.starts_with("```")) {
            inside = !inside;
            if (inside) blocks.push_back({line.substr(3), ""});
        } else if (inside) {
            blocks.back().text += line + "\n";
        }
    }
    return blocks;
}

void compare(const std::filesystem::path& root, const std::string& file, const Block& block,
             Findings& findings) {
    const std::string expected = read_text(root / file);
    if (expected.empty()) {
        findings.push_back(file + ": missing or empty");
    } else if (block.text != expected) {
        findings.push_back("README.md: its example differs from " + file);
    }
}

}  // namespace

Findings readme_example(const std::filesystem::path& root) {
    Findings findings;
    const std::vector<Block> blocks = blocks_of(read_text(root / "README.md"));
    for (std::size_t i = 0; i + 1 < blocks.size(); ++i) {
        if (blocks[i].mark != "cpp") continue;
        compare(root, "examples/order_holes.cpp", blocks[i], findings);
        compare(root, "examples/order_holes.expected", blocks[i + 1], findings);
        return findings;
    }
    findings.push_back("README.md: no block marked cpp with its output after it");
    return findings;
}

}  // namespace nmk_house
