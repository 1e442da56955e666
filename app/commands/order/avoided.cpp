// avoided: the keep-outs that the travel avoids, and the items that they block.

#include "commands/order/avoided.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "files/base_name.h"
#include "files/read_whole_file.h"
#include "shell/command_result.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

// Blocked items that a message lists; it counts the others.
constexpr std::size_t max_listed = 5;

nmkTravelProblem problem_of(const std::vector<nmk_keep_outs::KeepOut>& keep_outs,
                            const TravelMeasure& measure) {
    nmkTravelProblem problem = empty_problem(measure);
    for (const nmk_keep_outs::KeepOut& keep_out : keep_outs) {
        problem.keep_outs.push_back(keep_out.shape);
    }
    return problem;
}

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

/// Divides the plane into the areas that keep-outs separate from each other, as far as places in
/// them are asked for.
class Areas {
  public:
    explicit Areas(const Avoided& avoided) : m_avoided(avoided) {}

    /// The area of a place that is inside no keep-out, from 0 in the order of the first places.
    std::size_t of(const giPoint3& place) {
        for (std::size_t area = 0; area < m_last_places.size(); ++area) {
            if (std::isfinite(m_avoided.ways().length(m_last_places[area], place))) {
                m_last_places[area] = place;
                return area;
            }
        }
        m_last_places.push_back(place);
        return m_last_places.size() - 1;
    }

  private:
    const Avoided& m_avoided;
    std::vector<giPoint3> m_last_places;  // of each area: that of late is near to the next
};

nmk_text::Error blocked_place(const char* name, const giPoint3& place, const std::string& reason) {
    return {{},
            0,
            std::string(name) + " " + place_text(place) + " is " + reason +
                "; expected a place outside of all keep-outs"};
}

/// The start and the end place, where they are given, are in area 0.
nmk_text::Result<void> check_ends(const TravelEnds& ends, Areas& areas) {
    for (const auto& [place, name] : {std::pair(ends.start, "--start"), {ends.end, "--end"}}) {
        const std::string inside = place ? reason_at(*ends.avoided, *place) : std::string();
        if (!inside.empty()) {
            return blocked_place(name, *place, inside);
        }
        if (place && areas.of(*place) != 0) {
            return blocked_place(name, *place, "separated from --start by keep-outs");
        }
    }
    return {};
}

/// The area with most of the items; the first of those that have equally many.
std::size_t largest_area(const std::vector<std::optional<std::size_t>>& area_of_items) {
    std::vector<std::size_t> counts(1, 0);
    for (const std::optional<std::size_t>& area : area_of_items) {
        if (area) {
            counts.resize(std::max(counts.size(), *area + 1), 0);
            ++counts[*area];
        }
    }
    return static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) -
                                    counts.begin());
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

Avoided::Avoided(std::string file_name, std::vector<nmk_keep_outs::KeepOut> keep_outs,
                 const TravelMeasure& measure)
    : m_file_name(std::move(file_name)),
      m_keep_outs(std::move(keep_outs)),
      m_problem(problem_of(m_keep_outs, measure)),
      m_ways(m_problem) {}

std::string Avoided::name(int keep_out) const {
    const std::size_t line = m_keep_outs[static_cast<std::size_t>(keep_out)].line;
    return nmk_files::base_name(m_file_name) + ":" + std::to_string(line);
}

nmk_text::Result<std::shared_ptr<const Avoided>> read_avoided(const std::string& file_name) {
    if (file_name.empty()) {
        return std::shared_ptr<const Avoided>();
    }
    const auto text = nmk_files::read_input(file_name);
    if (!text) {
        return text.error();
    }
    const std::string name = nmk_files::input_name(file_name);
    if (const auto checked = nmk_files::check_text_file(name, *text); !checked) {
        return checked.error();
    }
    auto read = nmk_keep_outs::read_keep_outs(name, *text);
    if (!read) {
        return read.error();
    }
    return std::shared_ptr<const Avoided>(std::make_shared<Avoided>(name, *std::move(read)));
}

std::shared_ptr<const Avoided> avoided_with(const std::shared_ptr<const Avoided>& avoided,
                                            const TravelMeasure& measure) {
    const bool is_as_read = avoided == nullptr || measure.kind == nmkTravelMeasure::length;
    return is_as_read ? avoided
                      : std::make_shared<const Avoided>(avoided->file_name(), avoided->keep_outs(),
                                                        measure);
}

nmk_text::Result<std::vector<BlockedItem>> blocked_items(const nmk_job::MachiningJob& job,
                                                         const TravelEnds& ends) {
    std::vector<BlockedItem> blocked;
    if (ends.avoided == nullptr) {
        return blocked;
    }
    Areas areas(*ends.avoided);
    if (const auto checked = check_ends(ends, areas); !checked) {
        return checked.error();
    }
    std::vector<std::optional<std::size_t>> area_of_items;
    std::vector<std::string> reasons;
    for (const nmk_job::JobItem& item : job.items) {
        reasons.push_back(reason_of(*ends.avoided, item));
        area_of_items.push_back(reasons.back().empty() ? std::optional(areas.of(item.start))
                                                       : std::nullopt);
    }
    const std::size_t reached = ends.start || ends.end ? 0 : largest_area(area_of_items);
    for (std::size_t i = 0; i < job.items.size(); ++i) {
        if (area_of_items[i] && *area_of_items[i] != reached) {
            reasons[i] = "enclosed by keep-outs";
        }
        if (!reasons[i].empty()) {
            blocked.push_back({i, std::move(reasons[i])});
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
    const auto blocked = blocked_items(job, request.ends);
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
