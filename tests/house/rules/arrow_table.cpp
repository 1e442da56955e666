#include "house/rules/arrow_table.h"

#include <algorithm>
#include <sstream>

#include "house/rules/source_text.h"

namespace nmk_house {

namespace {

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    const std::size_t last = text.find_last_not_of(" \t");
    return first == text.npos ? std::string() : text.substr(first, last - first + 1);
}

/// The cells of a row of a table in Markdown; empty if the line is not a row.
std::vector<std::string> cells_of(const std::string& line) {
    std::vector<std::string> cells;
    if (!line.starts_with('|')) return cells;
    std::istringstream rest(line.substr(1));
    std::string cell;
    while (std::getline(rest, cell, '|')) cells.push_back(trimmed(cell));
    return cells;
}

/// What a cell has between backticks.
std::vector<std::string> quoted(const std::string& cell) {
    std::vector<std::string> names;
    for (std::size_t open = cell.find('`'); open != cell.npos;) {
        const std::size_t close = cell.find('`', open + 1);
        if (close == cell.npos) break;
        names.push_back(cell.substr(open + 1, close - open - 1));
        open = cell.find('`', close + 1);
    }
    return names;
}

std::size_t column_of(const std::vector<std::string>& head, const std::string& name) {
    return static_cast<std::size_t>(std::ranges::find(head, name) - head.begin());
}

}  // namespace

PathParts path_parts(const std::string& path) {
    PathParts parts;
    std::istringstream rest(path);
    std::string part;
    while (std::getline(rest, part, '/')) {
        if (!part.empty()) parts.push_back(part);
    }
    return parts;
}

ArrowTable::ArrowTable(const std::filesystem::path& root) {
    read_tables(read_text(root / "ARCHITECTURE.md"));
    read_libraries(read_text(root / "platform" / "CMakeLists.txt"));
    follow_needs();
    check_subsystems();
    if (m_rows.empty()) m_faults.push_back("ARCHITECTURE.md: no table with a column may include");
    if (m_builds_on.empty())
        m_faults.push_back("ARCHITECTURE.md: no table with a column builds on");
    if (m_needs.empty()) m_faults.push_back("platform/CMakeLists.txt: no nmk_platform_library");
}

void ArrowTable::read_tables(const std::string& text) {
    std::vector<std::string> head;
    for (const std::string& line : lines_of(text)) {
        const std::vector<std::string> cells = cells_of(line);
        if (cells.empty() || head.empty()) {
            head = cells;
            continue;
        }
        if (cells[0].starts_with("---")) continue;
        const std::size_t may_include = column_of(head, "may include");
        const std::size_t builds_on = column_of(head, "builds on");
        if (may_include < cells.size()) read_row(cells, may_include);
        if (builds_on < cells.size()) read_subsystem(cells, builds_on);
    }
}

void ArrowTable::read_row(const std::vector<std::string>& cells, std::size_t may_include) {
    Row row;
    for (const std::string& path : quoted(cells[0])) row.from.push_back(path_parts(path));
    for (const std::string& path : quoted(cells[may_include])) row.to.push_back(path_parts(path));
    m_rows.push_back(std::move(row));
}

void ArrowTable::read_subsystem(const std::vector<std::string>& cells, std::size_t builds_on) {
    const std::vector<std::string> below = quoted(cells[builds_on]);
    for (const std::string& name : quoted(cells[0]))
        m_builds_on[name].insert(below.begin(), below.end());
}

/// Lines "nmk_platform_library(<library> [NEEDS <library>...] [LINK ...] [LINK_PRIVATE ...])".
void ArrowTable::read_libraries(const std::string& text) {
    const std::string call = "nmk_platform_library(";
    const std::string code = text;
    for (std::size_t at = code.find("\n" + call); at != code.npos;
         at = code.find("\n" + call, at + 1)) {
        const std::size_t begin = at + 1 + call.size();
        std::istringstream words(code.substr(begin, code.find(')', begin) - begin));
        std::string library, word;
        words >> library;
        m_needs[library];
        bool needs = false;
        while (words >> word) {
            if (word == "NEEDS" || word.starts_with("LINK")) {
                needs = word == "NEEDS";
            } else if (needs) {
                m_needs[library].insert(word);
            }
        }
    }
}

void ArrowTable::follow_needs() {
    for (bool grew = true; grew;) {
        grew = false;
        for (auto& [library, needs] : m_needs) {
            for (const std::string& needed : Names(needs)) {
                const Names& further = m_needs[needed];
                const std::size_t before = needs.size();
                needs.insert(further.begin(), further.end());
                grew = grew || needs.size() > before;
            }
        }
    }
}

void ArrowTable::check_subsystems() {
    for (const auto& [subsystem, below] : m_builds_on) {
        for (const std::string& other : below) {
            if (!is_subsystem(other)) {
                m_faults.push_back("ARCHITECTURE.md: " + subsystem + " builds on " + other +
                                   ", which has no row in the table of subsystems");
            }
        }
    }
}

/// The umbrella header of a subsystem counts as one of its headers.
PathParts ArrowTable::normal(const std::string& file) const {
    PathParts parts = path_parts(file);
    if (parts.size() == 3 && parts[0] == "include" && parts[2].ends_with(".h")) {
        const std::string stem = parts[2].substr(0, parts[2].size() - 2);
        if (is_subsystem(stem)) parts.insert(parts.begin() + 2, stem);
    }
    return parts;
}

bool ArrowTable::part_matches(const std::string& pattern, const std::string& name,
                              Bound& bound) const {
    if (pattern.ends_with('*')) return name.starts_with(pattern.substr(0, pattern.size() - 1));
    if (!pattern.starts_with('<')) return pattern == name;
    if (pattern == "<any>") return true;
    if (pattern == "<header>") return name.ends_with(".h");
    if (pattern == "<needed>") {
        const auto needs = m_needs.find(bound["<library>"]);
        return needs != m_needs.end() && needs->second.contains(name);
    }
    if (pattern == "<below>") {
        const auto below = m_builds_on.find(bound["<subsystem>"]);
        return below != m_builds_on.end() && below->second.contains(name);
    }
    if (pattern == "<library>" && !m_needs.contains(name)) return false;
    if (pattern == "<subsystem>" && !is_subsystem(name)) return false;
    return bound.try_emplace(pattern, name).first->second == name;
}

bool ArrowTable::matches(const PathParts& pattern, const PathParts& file, Bound& bound) const {
    if (file.size() < pattern.size()) return false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (!part_matches(pattern[i], file[i], bound)) return false;
    }
    return true;
}

bool ArrowTable::covers(const std::string& file) const {
    const PathParts parts = normal(file);
    for (const Row& row : m_rows) {
        for (const PathParts& from : row.from) {
            Bound bound;
            if (matches(from, parts, bound)) return true;
        }
    }
    return false;
}

bool ArrowTable::allows(const std::string& from, const std::string& to) const {
    const PathParts from_parts = normal(from);
    const PathParts to_parts = normal(to);
    for (const Row& row : m_rows) {
        for (const PathParts& pattern : row.from) {
            Bound bound;
            if (!matches(pattern, from_parts, bound)) continue;
            for (const PathParts& target : row.to) {
                Bound further = bound;
                if (matches(target, to_parts, further)) return true;
            }
        }
    }
    return false;
}

}  // namespace nmk_house
