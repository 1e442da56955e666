// excellon_merged_tools.h: the tools that a drill program still has after nmk_job::merge_tools.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "formats/excellon/excellon_program.h"
#include "formats/job/machining_job.h"

namespace nmk_excellon {

/// Where nothing was merged, all tools of the program and its text as it is.
class ProgramTools {
  public:
    ProgramTools(const nmk_job::MachiningJob& job, const ExcellonProgram& program);

    /// The number of a tool of the job.
    int number_of(std::size_t tool) const;

    /// What is written when the tool of this number is selected, with the remarks of the tools that
    /// were merged into it.
    const ToolLines& lines(int number) const { return m_lines.at(number); }

    /// True for a tool that nothing in the program needs any more: it was merged into another one,
    /// and no routed path or pattern uses it.
    bool is_dropped(int number) const { return m_dropped.contains(number); }

    /// The text without the lines of tools that are dropped: their definitions, and selections
    /// after which nothing is cut. A line that does more is kept.
    std::string kept_text(std::string_view text) const;
    std::vector<std::string> kept_lines(const std::vector<std::string>& lines) const;

  private:
    void merge(int number);
    bool is_of_dropped(std::string_view line) const;

    const nmk_job::MachiningJob& m_job;
    const ExcellonProgram& m_program;
    std::map<int, ToolLines> m_lines;
    std::set<int> m_dropped;
};

}  // namespace nmk_excellon
