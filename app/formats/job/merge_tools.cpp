// merge_tools: one tool in place of several with one diameter.

#include "formats/job/merge_tools.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace nmk_job {

namespace {

/// For each tool the number of fences before its items.
std::vector<std::size_t> sides_of_tools(const MachiningJob& job) {
    std::vector<std::size_t> sides(job.tools.size(), 0);
    std::size_t side = 0;
    for (std::size_t i = 0; i < job.items.size(); ++i) {
        while (side < job.fences.size() && job.fences[side] <= i) {
            ++side;
        }
        sides[job.items[i].tool] = side;
    }
    return sides;
}

/// The tools after merging, and for each tool before its position among them.
class MergedTools {
  public:
    explicit MergedTools(const MachiningJob& job) : m_job(job), m_sides(sides_of_tools(job)) {
        for (std::size_t tool = 0; tool < job.tools.size(); ++tool) {
            m_positions.push_back(static_cast<std::uint32_t>(position_of(tool)));
        }
    }

    std::vector<JobTool> tools;
    std::vector<std::string> notes;

    std::uint32_t operator[](std::uint32_t tool) const { return m_positions[tool]; }

  private:
    std::size_t position_of(std::size_t tool) {
        const JobTool& before = m_job.tools[tool];
        if (!before.diameter) {
            tools.push_back(before);
            return tools.size() - 1;
        }
        const JobTool& kept = m_job.tools[m_kept.try_emplace(*before.diameter, tool).first->second];
        if (kept.name != before.name && m_gone.insert(before.name).second) {
            notes.push_back(before.name + ": merged into " + kept.name +
                            ", which has the same diameter");
        }
        const auto [found, is_new] =
            m_merged.try_emplace({*before.diameter, m_sides[tool]}, tools.size());
        if (is_new) {
            tools.push_back(kept);
        }
        return found->second;
    }

    const MachiningJob& m_job;
    std::vector<std::size_t> m_sides;
    std::map<double, std::size_t> m_kept;  // the first tool of each diameter
    std::map<std::pair<double, std::size_t>, std::size_t> m_merged;  // by diameter and side
    std::set<std::string> m_gone;
    std::vector<std::uint32_t> m_positions;
};

}  // namespace

void merge_tools(MachiningJob& job) {
    MergedTools merged(job);
    for (JobItem& item : job.items) {
        item.tool = merged[item.tool];
    }
    job.tools = std::move(merged.tools);
    job.notes.insert(job.notes.end(), merged.notes.begin(), merged.notes.end());
}

}  // namespace nmk_job
