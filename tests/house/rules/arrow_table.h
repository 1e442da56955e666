// arrow_table: which files may include which, as the tables in ARCHITECTURE.md say.
//
// The tables are the ones with a column "may include": each row has, between backticks, the paths
// that it is about and the paths that these may include. A path covers itself and all below it. In
// a path
//   <library>, <subsystem>, <command>, <format>   bind one name: the same on both sides of a row
//   <needed>   a platform library that <library> needs, as platform/CMakeLists.txt says, followed
//              to the end
//   <below>    a subsystem that <subsystem> builds on, as the table with the column "builds on"
//              says
//   <any>      one name, whichever
//   <header>   one name that ends with ".h"
//   *          at the end of a name: any name that begins so
// A file may include what any row allows that covers it.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace nmk_house {

using PathParts = std::vector<std::string>;

PathParts path_parts(const std::string& path);

class ArrowTable {
  public:
    explicit ArrowTable(const std::filesystem::path& root);

    /// What is wrong with the tables themselves.
    const std::vector<std::string>& faults() const { return m_faults; }

    /// Whether a row is about this file.
    bool covers(const std::string& file) const;

    bool allows(const std::string& from, const std::string& to) const;

    bool is_subsystem(const std::string& name) const { return m_builds_on.contains(name); }

  private:
    using Names = std::set<std::string>;
    using Bound = std::map<std::string, std::string>;
    struct Row {
        std::vector<PathParts> from;
        std::vector<PathParts> to;
    };

    void read_tables(const std::string& text);
    void read_subsystem(const std::vector<std::string>& cells, std::size_t builds_on);
    void read_row(const std::vector<std::string>& cells, std::size_t may_include);
    void read_libraries(const std::string& text);
    void follow_needs();
    void check_subsystems();
    PathParts normal(const std::string& file) const;
    bool matches(const PathParts& pattern, const PathParts& file, Bound& bound) const;
    bool part_matches(const std::string& pattern, const std::string& name, Bound& bound) const;

    std::vector<Row> m_rows;
    std::map<std::string, Names> m_builds_on;
    std::map<std::string, Names> m_needs;
    std::vector<std::string> m_faults;
};

}  // namespace nmk_house
