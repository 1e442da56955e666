// job_notes: what is unusual about a job and may be a mistake in its file.

#include "commands/order/job_notes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <tuple>

#include "text/number_format.h"

namespace nmk_order {

namespace {

/// Tool, start and end of an item; items of one tool that coincide have the same.
auto key_of(const nmk_job::JobItem& item) {
    const giPoint3& end = item.end ? *item.end : item.start;
    return std::tuple(item.tool, item.start.x, item.start.y, item.start.z, end.x, end.y, end.z);
}

/// For each tool the number of items that are where another one before them is.
std::vector<std::size_t> coincident_items(const nmk_job::MachiningJob& job) {
    std::vector<std::uint32_t> order(job.items.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return key_of(job.items[a]) < key_of(job.items[b]);
    });
    std::vector<std::size_t> counts(job.tools.size(), 0);
    for (std::size_t i = 1; i < order.size(); ++i) {
        const nmk_job::JobItem& item = job.items[order[i]];
        counts[item.tool] += key_of(item) == key_of(job.items[order[i - 1]]) ? 1U : 0U;
    }
    return counts;
}

std::string diameter_text(double diameter, nmk_job::JobUnits units) {
    const bool is_inch = units == nmk_job::JobUnits::inches;
    return nmk_text::short_number(diameter / nmk_job::mm_of(units), is_inch ? 6 : 5) +
           (is_inch ? " in" : " mm");
}

/// The tools by diameter and, for one diameter, in their order.
std::vector<const nmk_job::JobTool*> tools_by_diameter(const nmk_job::MachiningJob& job) {
    std::vector<const nmk_job::JobTool*> tools;
    for (const nmk_job::JobTool& tool : job.tools) {
        if (tool.diameter) {
            tools.push_back(&tool);
        }
    }
    std::stable_sort(tools.begin(), tools.end(),
                     [](const auto* a, const auto* b) { return *a->diameter < *b->diameter; });
    return tools;
}

}  // namespace

std::vector<std::string> job_notes(const nmk_job::MachiningJob& job) {
    std::vector<std::string> notes;
    const std::vector<std::size_t> coincident = coincident_items(job);
    for (std::size_t tool = 0; tool < coincident.size(); ++tool) {
        const std::size_t count = coincident[tool];
        if (count > 0) {
            notes.push_back(job.tools[tool].name + ": " + std::to_string(count) +
                            (count == 1 ? " item coincides" : " items coincide") +
                            " with another one of this tool");
        }
    }
    const std::vector<const nmk_job::JobTool*> tools = tools_by_diameter(job);
    for (std::size_t i = 1; i < tools.size(); ++i) {
        const bool is_same = *tools[i]->diameter == *tools[i - 1]->diameter;
        if (is_same && tools[i]->name != tools[i - 1]->name) {
            notes.push_back(tools[i - 1]->name + " and " + tools[i]->name +
                            " have the same diameter, " +
                            diameter_text(*tools[i]->diameter, job.units));
        }
    }
    return notes;
}

std::string no_items_message(const std::string& file_name) {
    return file_name + ": no holes or slots to order; --allow-empty accepts that";
}

}  // namespace nmk_order
