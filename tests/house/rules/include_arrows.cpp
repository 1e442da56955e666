// include_arrows: resolves every #include of ours to a file of the tree and asks the tables.
#include <algorithm>
#include <optional>

#include "house/rules/arrow_table.h"
#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace fs = std::filesystem;

namespace {

class ArrowCheck {
  public:
    explicit ArrowCheck(const fs::path& root) : m_root(root), m_table(root) {
        m_include_directories = {"", "include", "source", "app", "tests", "benchmarks"};
        for (const char* below : {"include", "source"}) {
            if (!fs::is_directory(root / "platform")) continue;
            for (const auto& library : fs::directory_iterator(root / "platform")) {
                const std::string name = library.path().filename().string();
                m_include_directories.push_back("platform/" + name + "/" + below);
            }
        }
    }

    Findings findings() {
        m_findings = m_table.faults();
        for (const std::string& file : files_below(m_root, code_directories(), {".h", ".cpp"})) {
            check_file(file);
        }
        return m_findings;
    }

  private:
    void check_file(const std::string& file) {
        if (!m_table.covers(file)) {
            m_findings.push_back(file + ": no row of the tables in ARCHITECTURE.md is about it");
            return;
        }
        for (const Include& include : includes_of(read_text(m_root / file))) {
            check_include(file, include);
        }
    }

    void check_include(const std::string& file, const Include& include) {
        const std::string where = file + ":" + std::to_string(include.line) + ": ";
        if (include.name.empty()) {
            m_findings.push_back(where + "an #include of a macro; expected a file name");
            return;
        }
        const std::vector<std::string> targets = targets_of(file, include);
        if (!targets.empty() && std::ranges::none_of(targets, [&](const std::string& target) {
                return m_table.allows(file, target);
            })) {
            m_findings.push_back(where + "includes " + targets.front() +
                                 "; no row of the tables in ARCHITECTURE.md allows that");
        }
    }

    /// Files of the tree that the name may mean: beside the including file, and below each
    /// directory that some target has among its include directories. None for what is installed.
    std::vector<std::string> targets_of(const std::string& file, const Include& include) const {
        std::vector<std::string> targets;
        if (include.quoted) {
            if (auto beside = in_tree(fs::path(file).parent_path() / include.name)) {
                return {*beside};
            }
        }
        for (const std::string& directory : m_include_directories) {
            if (auto found = in_tree(fs::path(directory) / include.name)) {
                targets.push_back(*found);
            }
        }
        return targets;
    }

    std::optional<std::string> in_tree(const fs::path& path) const {
        const fs::path normal = path.lexically_normal();
        if (!fs::is_regular_file(m_root / normal)) return std::nullopt;
        return normal.generic_string();
    }

    fs::path m_root;
    ArrowTable m_table;
    std::vector<std::string> m_include_directories;
    Findings m_findings;
};

}  // namespace

Findings include_arrows(const fs::path& root) { return ArrowCheck(root).findings(); }

}  // namespace nmk_house
