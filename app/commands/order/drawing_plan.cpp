// drawing_plan: how a part is drawn, so that the travel is seen whatever the number of items.

#include "commands/order/drawing_plan.h"

#include <algorithm>
#include <string>

#include "draw/point_spacing.h"

namespace nmk_order {

namespace {

constexpr double dot_radius = 2.5;       // pixels, of a hole of unknown diameter
constexpr double min_radius = 1.5;       // of a hole to scale, where there is room
constexpr double smallest_radius = 0.3;  // however near the holes are
constexpr double radius_share = 0.25;    // of the distance between holes, for a hole not to scale

constexpr std::size_t max_circles = 10'000;       // above, holes are dots without a rim
constexpr std::size_t max_dashed_moves = 20'000;  // above, lines are thin and not dashed
constexpr std::size_t max_items = 40'000;         // and moves, in one panel
constexpr std::size_t max_paths = 4096;           // of travel, in one panel

double spacing_of(const nmk_job::MachiningJob& job, const PartView& view) {
    std::vector<nmk_draw::SvgPoint> points;
    points.reserve(job.items.size());
    for (const nmk_job::JobItem& item : job.items) {
        points.push_back(view.at(item.start));
    }
    return nmk_draw::point_spacing(points);
}

double travel_width(std::size_t moves) {
    return moves > max_dashed_moves ? 0.5 : moves > 3000 ? 0.8 : moves > 800 ? 1.2 : 1.7;
}

std::string ordinal(std::size_t number) {
    const std::size_t last = number % 10;
    const bool is_teen = number / 10 % 10 == 1;
    return std::to_string(number) + (is_teen || last > 3 || last == 0 ? "th"
                                     : last == 1                      ? "st"
                                     : last == 2                      ? "nd"
                                                                      : "rd");
}

}  // namespace

double DrawingPlan::cut_radius(const nmk_job::JobTool& tool, double scale) const {
    const double to_scale = tool.diameter.value_or(0.0) / 2.0 * scale;
    const double least = tool.diameter ? std::min(max_dot_radius, min_radius) : max_dot_radius;
    return std::max(to_scale, least);
}

std::string DrawingPlan::group_attribute(std::size_t group) const {
    return "data-tool=\"" + std::to_string(group) + "\"";
}

DrawingPlan drawing_plan(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                         bool across_tools, const PartView& view) {
    const std::size_t items = job.items.size();
    DrawingPlan plan;
    plan.tools.tools = job.tools.size();
    plan.across_tools = across_tools;
    plan.every_item = std::max<std::size_t>((items + max_items - 1) / max_items, 1);
    plan.colour_steps = std::clamp<std::size_t>(
        max_paths / std::max<std::size_t>(ordered.runs.size(), 1), 1, plan.colour_steps);
    plan.max_dot_radius =
        std::clamp(spacing_of(job, view) * radius_share, smallest_radius, dot_radius);
    plan.travel_width = travel_width(items - std::min(items, ordered.runs.size()));
    plan.has_rims = items <= max_circles;
    plan.is_dashed = items <= max_dashed_moves;
    plan.decimals = plan.has_rims ? 2 : 1;
    return plan;
}

std::string omission_note(const DrawingPlan& plan) {
    if (plan.every_item == 1) {
        return "";
    }
    const std::string every = "every " + ordinal(plan.every_item);
    return "Too many items to draw them all: " + every + " of them and " + every +
           " move are drawn";
}

}  // namespace nmk_order
