// job_notes: what is unusual about a job and may be a mistake in its file.

#include "commands/order/job_notes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <tuple>
#include <vector>

#include "text/number_format.h"

namespace nmk_order {

namespace {

/// Tool, start and end of an item; items of one tool that coincide have the same.
auto key_of(const nmk_job::JobItem& item) {
    const giPoint3& end = item.end ? *item.end : item.start;
    return std::tuple(item.tool, item.start.x, item.start.y, item.start.z, end.x, end.y, end.z);
}

/// An item by the place of its start in the plane, which is all that most comparisons need: items
/// themselves are spread over the memory, where a sort of millions of them waits for each.
struct PlacedItem {
    double x, y;
    std::uint32_t item;

    bool is_beside(const PlacedItem& other) const { return x == other.x && y == other.y; }
    bool operator<(const PlacedItem& other) const {
        return x < other.x || (x == other.x && y < other.y);
    }
};

std::vector<PlacedItem> items_by_place(const nmk_job::MachiningJob& job) {
    std::vector<PlacedItem> placed;
    placed.reserve(job.items.size());
    for (std::uint32_t i = 0; i < job.items.size(); ++i) {
        placed.push_back({job.items[i].start.x, job.items[i].start.y, i});
    }
    std::sort(placed.begin(), placed.end());
    return placed;
}

/// Adds those of the items at one place that coincide with another one to the counts of their
/// tools.
void count_coincident(const nmk_job::MachiningJob& job, std::span<PlacedItem> at_one_place,
                      std::vector<std::size_t>& counts) {
    const auto key = [&](const PlacedItem& placed) { return key_of(job.items[placed.item]); };
    std::sort(at_one_place.begin(), at_one_place.end(),
              [&](const PlacedItem& a, const PlacedItem& b) { return key(a) < key(b); });
    for (std::size_t i = 1; i < at_one_place.size(); ++i) {
        const bool is_same = key(at_one_place[i]) == key(at_one_place[i - 1]);
        counts[job.items[at_one_place[i].item].tool] += is_same ? 1U : 0U;
    }
}

/// For each tool the number of items that are where another one before them is.
std::vector<std::size_t> coincident_items(const nmk_job::MachiningJob& job) {
    std::vector<std::size_t> counts(job.tools.size(), 0);
    std::vector<PlacedItem> placed = items_by_place(job);
    for (std::size_t begin = 0; begin < placed.size();) {
        std::size_t end = begin + 1;
        while (end < placed.size() && placed[end].is_beside(placed[begin])) {
            ++end;
        }
        count_coincident(job, std::span(placed).subspan(begin, end - begin), counts);
        begin = end;
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
