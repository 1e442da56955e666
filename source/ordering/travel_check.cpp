#include "travel_check.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "travel_check_keep_outs.h"

namespace nmk_ordering {

namespace {

using Kind = nmkTravelEnd::Kind;

// Nodes are numbered by int, two for a line.
constexpr std::size_t max_items = 1000000000;

bool is_finite(const giPoint3& p) {
    return p.is_set() && std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

std::string fault_of_items(const std::vector<nmkTravelItem>& items) {
    if (items.size() > max_items) return "items: expected at most 1000000000";
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::string name = "item " + std::to_string(i) + ": ";
        const nmkTravelItemKind kind = items[i].kind;
        const bool is_point = kind == nmkTravelItemKind::point;
        if (!is_point && kind != nmkTravelItemKind::line &&
            kind != nmkTravelItemKind::one_way_line) {
            return name + "unknown kind; expected a point, a line or a one-way line";
        }
        if (!is_finite(items[i].start) || (!is_point && !is_finite(items[i].end))) {
            return name + "expected finite coordinates";
        }
    }
    return {};
}

bool is_item(int item, const nmkTravelProblem& problem) {
    return item >= 0 && static_cast<std::size_t>(item) < problem.items.size();
}

std::string fault_of_end(const nmkTravelEnd& end, const char* name,
                         const nmkTravelProblem& problem) {
    const std::string prefix = std::string(name) + ": ";
    if (end.kind == Kind::place && !is_finite(end.place)) {
        return prefix + "expected finite coordinates";
    }
    if (end.kind == Kind::item && !is_item(end.item, problem)) {
        return prefix + "item " + std::to_string(end.item) + " does not exist";
    }
    return {};
}

std::string fault_of_ends(const nmkTravelProblem& problem) {
    if (problem.start.kind == Kind::at_start) return "start: expected free, a place or an item";
    const bool is_one_item = problem.start.kind == Kind::item && problem.end.kind == Kind::item &&
                             problem.start.item == problem.end.item;
    if (is_one_item && problem.items.size() > 1) {
        return "end: item " + std::to_string(problem.end.item) +
               " is the start as well; expected another, or the end at the start";
    }
    const std::string fault = fault_of_end(problem.start, "start", problem);
    return fault.empty() ? fault_of_end(problem.end, "end", problem) : fault;
}

std::string fault_of_axes(const nmkTravelAxes& axes, const char* name) {
    for (const double value : {axes.x, axes.y, axes.z}) {
        if (!(value > 0.0) || !std::isfinite(value)) {
            return std::string(name) + ": expected numbers above 0 for all axes";
        }
    }
    return {};
}

std::string fault_of_measure(const nmkTravelProblem& problem) {
    switch (problem.measure) {
        case nmkTravelMeasure::length:
        case nmkTravelMeasure::chebyshev:
            return {};
        case nmkTravelMeasure::time:
            break;
        default:
            return "measure: unknown; expected length, Chebyshev or time";
    }
    const std::string fault = fault_of_axes(problem.speed, "speed");
    return fault.empty() ? fault_of_axes(problem.acceleration, "acceleration") : fault;
}

// A group and the ends have to agree: the start item is the first of a group that keeps its order,
// the end item the last, and both are in one group only if that has all items.
std::string fault_of_group_ends(const nmkTravelGroup& group, const std::string& name,
                                const nmkTravelProblem& problem) {
    bool has_start = false;
    bool has_end = false;
    for (const int item : group.items) {
        has_start = has_start || (problem.start.kind == Kind::item && problem.start.item == item);
        has_end = has_end || (problem.end.kind == Kind::item && problem.end.item == item);
    }
    if (group.keeps_order && has_start && problem.start.item != group.items.front()) {
        return name + "keeps its order; expected the start item as its first";
    }
    if (group.keeps_order && has_end && problem.end.item != group.items.back()) {
        return name + "keeps its order; expected the end item as its last";
    }
    if (has_start && has_end && group.items.size() < problem.items.size()) {
        return name + "has the start item and the end item; expected all other items in it too";
    }
    return {};
}

std::string fault_of_groups(const nmkTravelProblem& problem) {
    std::vector<bool> is_taken(problem.groups.empty() ? 0 : problem.items.size());
    for (std::size_t g = 0; g < problem.groups.size(); ++g) {
        const std::string name = "group " + std::to_string(g) + ": ";
        for (const int item : problem.groups[g].items) {
            const std::string item_name = name + "item " + std::to_string(item);
            if (!is_item(item, problem)) return item_name + " does not exist";
            if (is_taken[static_cast<std::size_t>(item)]) {
                return item_name + " is in a group already";
            }
            is_taken[static_cast<std::size_t>(item)] = true;
        }
        std::string fault = fault_of_group_ends(problem.groups[g], name, problem);
        if (!fault.empty()) return fault;
    }
    return {};
}

}  // namespace

std::string fault_of(const nmkTravelProblem& problem) {
    std::string fault = fault_of_items(problem.items);
    if (fault.empty()) fault = fault_of_ends(problem);
    if (fault.empty()) fault = fault_of_measure(problem);
    if (fault.empty()) fault = fault_of_groups(problem);
    if (fault.empty()) fault = fault_of_keep_outs(problem);
    return fault;
}

}  // namespace nmk_ordering
