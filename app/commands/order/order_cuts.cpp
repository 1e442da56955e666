// order_cuts: the cuts of a part: holes as circles with the diameter of their tool, slots as thick
// lines, filled in the colour of the tool.

#include "commands/order/order_cuts.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <string>

#include "draw/colour_scale.h"
#include "formats/job/job_order.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

constexpr const char* rim_colour = "#5c6b7a";
constexpr const char* rest_colour = "#e1e5ea";
constexpr const char* rest_dot_colour = "#8d98a4";
constexpr double dot_width_step = 0.2;  // pixels; dots of about one width share a path

std::string stroke(const std::string& paint, double width) {
    return "stroke=\"" + paint + "\" stroke-width=\"" + nmk_text::short_number(width, 2) + "\"";
}

/// Draws the cuts of one group with circles and lines of their own.
class DetailedCuts {
  public:
    DetailedCuts(nmk_draw::SvgDocument& svg, const PartView& view, std::string colour)
        : m_svg(svg), m_view(view), m_colour(std::move(colour)) {}

    void draw(const nmk_job::JobItem& item, double radius) {
        if (item.end) {
            draw_slot(m_view.at(item.start), m_view.at(*item.end), radius);
        } else {
            m_svg.circle(m_view.at(item.start), radius);
        }
    }

  private:
    /// The outline is a wider line under the fill.
    void draw_slot(nmk_draw::SvgPoint from, nmk_draw::SvgPoint to, double radius) {
        m_svg.line(from, to, stroke(rim_colour, 2 * radius + 1.0));
        m_svg.line(from, to, stroke(m_colour, std::max(2 * radius - 1.0, 1.0)));
    }

    nmk_draw::SvgDocument& m_svg;
    const PartView& m_view;
    std::string m_colour;
};

/// Collects the cuts of one group as lines with round ends, a path for each width.
class PlainCuts {
  public:
    PlainCuts(const PartView& view, int decimals) : m_view(view), m_decimals(decimals) {}

    void add(const nmk_job::JobItem& item, double radius) {
        const long width = std::max(std::lround(2 * radius / dot_width_step), 1L);
        nmk_draw::SvgPath& path = m_paths.try_emplace(width, m_decimals).first->second;
        if (item.end) {
            path.line(m_view.at(item.start), m_view.at(*item.end));
        } else {
            path.dot(m_view.at(item.start));
        }
    }

    void draw(nmk_draw::SvgDocument& svg, const std::string& colour) const {
        for (const auto& [width, path] : m_paths) {
            svg.path(path, stroke(colour, static_cast<double>(width) * dot_width_step));
        }
    }

  private:
    const PartView& m_view;
    int m_decimals;
    std::map<long, nmk_draw::SvgPath> m_paths;
};

std::string group_dot_colour(const ToolGroups& tools, std::size_t group) {
    return tools.is_rest(group) ? rest_dot_colour : nmk_draw::tool_dot_colour(group);
}

/// The cuts of one group that are drawn, with the radius of each.
template <class Draw>
void each_cut(const PartView& view, const DrawingPlan& plan, const nmk_job::MachiningJob& job,
              std::span<const nmk_job::JobCut> cuts, Draw draw) {
    for (const nmk_job::JobCut& cut : cuts) {
        if (cut.item % plan.every_item == 0) {
            const nmk_job::JobItem& item = job.items[cut.item];
            draw(item, plan.cut_radius(job.tools[item.tool], view.scale));
        }
    }
}

void draw_detailed(nmk_draw::SvgDocument& svg, const PartView& view, const DrawingPlan& plan,
                   const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> cuts,
                   std::size_t group) {
    const std::string colour = group_colour(plan.tools, group);
    const double rim = std::min(1.0, plan.max_dot_radius * 0.4);
    svg.open_group(plan.group_attribute(group) + " fill=\"" + colour + "\" " +
                   stroke(rim_colour, rim));
    DetailedCuts detailed(svg, view, colour);
    each_cut(view, plan, job, cuts,
             [&](const nmk_job::JobItem& item, double radius) { detailed.draw(item, radius); });
    svg.close_group();
}

void draw_plain(nmk_draw::SvgDocument& svg, const PartView& view, const DrawingPlan& plan,
                const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> cuts,
                std::size_t group) {
    PlainCuts plain(view, plan.decimals);
    each_cut(view, plan, job, cuts,
             [&](const nmk_job::JobItem& item, double radius) { plain.add(item, radius); });
    svg.open_group(plan.group_attribute(group) + " fill=\"none\"");
    plain.draw(svg, group_dot_colour(plan.tools, group));
    svg.close_group();
}

}  // namespace

std::string group_colour(const ToolGroups& tools, std::size_t group) {
    return tools.is_rest(group) ? rest_colour : nmk_draw::tool_colour(group);
}

void draw_cuts(nmk_draw::SvgDocument& svg, const PartView& view, const DrawingPlan& plan,
               const nmk_job::MachiningJob& job) {
    const nmk_job::JobOrder order = nmk_job::order_by_tool(job);
    const auto group_of = [&](const nmk_job::JobCut& cut) {
        return plan.tools.of(job.items[cut.item].tool);
    };
    const auto draw_group = plan.has_rims ? draw_detailed : draw_plain;
    svg.open_group("class=\"cuts\" stroke-linecap=\"round\"");
    for (std::size_t begin = 0; begin < order.size();) {
        const std::size_t group = group_of(order[begin]);
        std::size_t end = begin + 1;
        while (end < order.size() && group_of(order[end]) == group) {
            ++end;
        }
        draw_group(svg, view, plan, job, std::span(order).subspan(begin, end - begin), group);
        begin = end;
    }
    svg.close_group();
}

}  // namespace nmk_order
