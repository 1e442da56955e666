// small_tree: a source tree of a few files that keeps every rule, in which tests plant violations.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "house/rules/rules.h"
#include "house/rules/source_text.h"
#include "scratch_directory.h"

class SmallTree {
  public:
    SmallTree();

    /// Writes a file, with the directories that it needs; replaces one that is there.
    void write(const std::string& name, const std::string& text) const {
        const std::filesystem::path file = root() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    std::string text(const std::string& name) const { return nmk_house::read_text(root() / name); }

    std::filesystem::path root() const { return m_folder.path(); }

  private:
    ScratchDirectory m_folder;
};

/// One violation: what is written into which file, and the beginning of the only finding.
struct Violation {
    const char* name;
    const char* file;
    const char* text;
    const char* finding;

    friend std::ostream& operator<<(std::ostream& stream, const Violation& violation) {
        return stream << violation.name;
    }
};

struct ViolationName {
    std::string operator()(const testing::TestParamInfo<Violation>& info) const {
        return info.param.name;
    }
};

/// Expects that the small tree keeps the rule, and that with the violation it has one finding,
/// which begins as the violation says.
void expect_caught(nmk_house::Findings (*rule)(const std::filesystem::path&),
                   const Violation& violation);
