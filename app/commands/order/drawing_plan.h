// drawing_plan.h: how a part is drawn, so that the travel is seen whatever the number of items.
//
// Few items are drawn with every detail. The nearer the holes are to each other in the drawing, the
// smaller is a hole that would otherwise hide the travel; the more there are, the thinner are the
// lines; and past some ten thousand not all of them are drawn, so that the file stays below 5 MB.
#pragma once

#include <cstddef>

#include "commands/order/order_job.h"
#include "commands/order/part_view.h"

namespace nmk_order {

/// Tools with a group of their own; those past them share one.
struct ToolGroups {
    std::size_t tools = 0;

    bool has_rest() const { return tools > max_groups; }
    std::size_t own() const { return has_rest() ? max_groups - 1 : tools; }
    std::size_t count() const { return own() + (has_rest() ? 1U : 0U); }
    std::size_t of(std::size_t tool) const { return tool < own() ? tool : own(); }
    bool is_rest(std::size_t group) const { return group >= own(); }

    static constexpr std::size_t max_groups = 36;
};

struct DrawingPlan {
    ToolGroups tools;
    bool across_tools = false;      // the travel belongs to no tool
    std::size_t every_item = 1;     // 2 if every second item and move is drawn
    std::size_t colour_steps = 64;  // of the travel of one tool
    double max_dot_radius = 2.5;    // pixels; of a hole that is larger than to scale
    double travel_width = 1.7;      // pixels
    bool has_rims = true;           // holes are circles with a rim; otherwise dots
    bool is_dashed = true;          // the travel
    int decimals = 2;

    /// Labels and marks in full size; not for more tools than can be distinguished.
    bool has_labels() const { return !tools.has_rest(); }

    /// Half the width of a cut in pixels.
    double cut_radius(const nmk_job::JobTool& tool, double scale) const;

    /// `data-tool="3"`, by which a page finds what belongs to a tool; empty for travel across
    /// tools.
    std::string group_attribute(std::size_t group) const;
    std::string travel_attribute(std::size_t group) const {
        return across_tools ? "" : group_attribute(group);
    }
};

DrawingPlan drawing_plan(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                         bool across_tools, const PartView& view);

/// What is left out, as a sentence; empty if everything is drawn.
std::string omission_note(const DrawingPlan& plan);

}  // namespace nmk_order
