// blocked_items: the items that keep-outs block, and what becomes of a job that has some.

#include "commands/order/blocked_items.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "commands/order/avoided.h"
#include "files/read_whole_file.h"
#include "shell/command_result.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

// Blocked items that a message lists; it counts the others.
constexpr std::size_t max_listed = 5;

std::string place_text(const giPoint3& p) {
    return "(" + nmk_text::short_number(p.x, 3) + ", " + nmk_text::short_number(p.y, 3) + ") mm";
}

/// Why places are blocked, as far as each can be decided by itself; empty where a place is not.
std::string reason_at(const Avoided& avoided, const giPoint3& place) {
    const auto keep_out = avoided.ways().keep_out_at(place);
    return keep_out ? "inside " + avoided.name(*keep_out) : std::string();
}

/// The other end of a slot that crosses no keep-out is inside none either.
std::string reason_of(const Avoided& avoided, const nmk_job::JobItem& item) {
    if (item.end) {
        const auto keep_out = avoided.ways().keep_out_between(item.start, *item.end);
        if (keep_out) {
            return "crosses " + avoided.name(*keep_out);
        }
    }
    return reason_at(avoided, item.start);
}

nmk_text::Error blocked_place(const char* name, const giPoint3& place, const std::string& reason) {
    return {{},
            0,
            std::string(name) + " " + place_text(place) + " is " + reason +
                "; expected a place outside of all keep-outs"};
}

/// The area of the start and the end place; empty where both are free.
nmk_text::Result<std::optional<int>> area_of_ends(const TravelEnds& ends) {
    std::optional<int> area;
    for (const auto& [place, name] : {std::pair(ends.start, "--start"), {ends.end, "--end"}}) {
        if (!place) {
            continue;
        }
        if (const std::string inside = reason_at(*ends.avoided, *place); !inside.empty()) {
            return blocked_place(name, *place, inside);
        }
        const std::optional<int> here = ends.avoided->ways().area_at(*place);
        if (area && here != area) {
            return blocked_place(name, *place, "separated from --start by keep-outs");
        }
        area = here;
    }
    return area;
}

/// The area with most of the items; of those that have equally many that which an item is in first.
std::optional<int> largest_area(const std::vector<std::optional<int>>& area_of_items) {
    std::map<int, std::size_t> counts;
    for (const std::optional<int>& area : area_of_items) {
        if (area) {
            ++counts[*area];
        }
    }
    std::optional<int> largest;
    for (const std::optional<int>& area : area_of_items) {
        if (area && (!largest || counts[*area] > counts[*largest])) {
            largest = area;
        }
    }
    return largest;
}

nmk_text::Error time_is_over(const nmk_job::MachiningJob& job, std::size_t checked) {
    return {nmk_files::input_name(job.file_name), 0,
            "the time limit ended the check for enclosed items after " + std::to_string(checked) +
                " of " + std::to_string(job.items.size()) + "; expected a longer --time-limit"};
}

/// Why each item is blocked; empty where it is not. `given_area` is that of the ends. An Error
/// where the time is over before.
nmk_text::Result<std::vector<std::string>> reasons_of_items(const nmk_job::MachiningJob& job,
                                                            const TravelEnds& ends,
                                                            std::optional<int> given_area,
                                                            const IsOver& is_over) {
    const nmkTravelWays& ways = ends.avoided->ways();
    std::vector<std::optional<int>> areas;
    std::vector<std::string> reasons;
    for (const nmk_job::JobItem& item : job.items) {
        if (is_over && ways.may_be_enclosed(item.start) && is_over()) {
            return time_is_over(job, reasons.size());
        }
        reasons.push_back(reason_of(*ends.avoided, item));
        areas.push_back(reasons.back().empty() ? ways.area_at(item.start) : std::nullopt);
    }
    const std::optional<int> reached = given_area ? given_area : largest_area(areas);
    for (std::size_t i = 0; i < areas.size(); ++i) {
        if (areas[i] && areas[i] != reached) {
            reasons[i] = "enclosed by keep-outs";
        }
    }
    return reasons;
}

/// The line that refuses a job with blocked items.
std::string blocked_message(const nmk_job::MachiningJob& job,
                            const std::vector<BlockedItem>& blocked, bool skips_blocked) {
    std::string text = nmk_files::input_name(job.file_name) + ": keep-outs block " +
                       std::to_string(blocked.size()) + " of " + std::to_string(job.items.size()) +
                       " items: ";
    for (std::size_t i = 0; i < std::min(blocked.size(), max_listed); ++i) {
        text += blocked_text(job, blocked[i]) + "; ";
    }
    if (blocked.size() > max_listed) {
        text += std::to_string(blocked.size() - max_listed) + " more; ";
    }
    return text + (skips_blocked ? "none is left" : "expected --skip-blocked or other keep-outs");
}

/// The fences of a job are numbers of items, and each is between the same items whatever the order.
Refusal leave_out(nmk_job::MachiningJob& job, const std::vector<BlockedItem>& blocked,
                  OrderRequest& request) {
    if (!job.fences.empty()) {
        return {job.file_name +
                    ": no item can be left out of a drill file with routed paths or patterns; "
                    "expected keep-outs that block none",
                nmk_shell::bad_input};
    }
    request.left_out.assign(job.items.size(), false);
    for (const BlockedItem& each : blocked) {
        request.left_out[each.item] = true;
        job.notes.push_back("left out: " + blocked_text(job, each));
    }
    return {};
}

}  // namespace

nmk_text::Result<std::vector<BlockedItem>> blocked_items(const nmk_job::MachiningJob& job,
                                                         const TravelEnds& ends,
                                                         const IsOver& is_over) {
    std::vector<BlockedItem> blocked;
    if (ends.avoided == nullptr) {
        return blocked;
    }
    const auto area = area_of_ends(ends);
    if (!area) {
        return area.error();
    }
    auto reasons = reasons_of_items(job, ends, *area, is_over);
    if (!reasons) {
        return reasons.error();
    }
    for (std::size_t i = 0; i < reasons->size(); ++i) {
        if (!(*reasons)[i].empty()) {
            blocked.push_back({i, std::move((*reasons)[i])});
        }
    }
    return blocked;
}

std::string blocked_text(const nmk_job::MachiningJob& job, const BlockedItem& blocked) {
    const nmk_job::JobItem& item = job.items[blocked.item];
    return std::string(item.end ? "slot " : "hole ") + std::to_string(blocked.item + 1) + " of " +
           job.tools[item.tool].name + " at " + place_text(item.start) + ": " + blocked.reason;
}

Refusal avoid_keep_outs(nmk_job::MachiningJob& job, OrderRequest& request, bool skips_blocked) {
    IsOver is_over;
    if (request.deadline) {
        is_over = [deadline = *request.deadline] { return OrderRequest::Clock::now() >= deadline; };
    }
    const auto blocked = blocked_items(job, request.ends, is_over);
    if (!blocked) {
        return {blocked.error().text(), nmk_shell::no_result};
    }
    const bool is_nothing_left = !blocked->empty() && blocked->size() == job.items.size();
    if (!blocked->empty() && (!skips_blocked || is_nothing_left)) {
        return {blocked_message(job, *blocked, skips_blocked), nmk_shell::no_result};
    }
    return blocked->empty() ? Refusal() : leave_out(job, *blocked, request);
}

}  // namespace nmk_order
