// order_travel: the moves between the cuts, dashed, coloured from first to last anew for each tool;
// and the longest of them.

#include "commands/order/order_travel.h"

#include <algorithm>
#include <optional>
#include <string>

#include "commands/order/order_figures.h"
#include "draw/colour_scale.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

/// Writes moves to a path until their colour or group changes.
class MovePaths {
  public:
    MovePaths(nmk_draw::SvgDocument& svg, const TravelRuns& runs)
        : m_svg(svg), m_runs(runs), m_path(runs.plan.decimals) {}

    void add(nmk_draw::SvgPoint from, nmk_draw::SvgPoint to, std::size_t group, std::size_t step) {
        if (group != m_group || step != m_step) {
            finish_path();
            m_step = step;
        }
        if (group != m_group) {
            finish_group();
            m_svg.open_group(m_runs.plan.travel_attribute(group));
            m_group = group;
        }
        m_path.line(from, to);
    }

    void finish() {
        finish_path();
        finish_group();
    }

  private:
    void finish_path() {
        if (!m_path.empty()) {
            const std::size_t last = m_runs.plan.colour_steps - 1;
            const double position =
                last > 0 ? static_cast<double>(m_step) / static_cast<double>(last) : 0.0;
            m_svg.path(m_path, "stroke=\"" + nmk_draw::order_colour(position) + "\"");
            m_path = nmk_draw::SvgPath(m_runs.plan.decimals);
        }
    }
    void finish_group() {
        if (m_group) {
            m_svg.close_group();
            m_group.reset();
        }
    }

    nmk_draw::SvgDocument& m_svg;
    const TravelRuns& m_runs;
    nmk_draw::SvgPath m_path;
    std::optional<std::size_t> m_group;
    std::size_t m_step = 0;
};

/// The step of the colours for a move of a run, by its position from first to last.
std::size_t colour_step(std::size_t move, std::size_t moves, std::size_t steps) {
    return moves > 1 ? (move * (steps - 1) + (moves - 1) / 2) / (moves - 1) : 0;
}

}  // namespace

std::string travel_style(const DrawingPlan& plan) {
    return "fill=\"none\" stroke-width=\"" + nmk_text::short_number(plan.travel_width, 2) + "\"" +
           (plan.is_dashed ? " stroke-dasharray=\"4.5 2.5\"" : "") + " stroke-linejoin=\"round\"";
}

void draw_moves(nmk_draw::SvgDocument& svg, const TravelRuns& runs) {
    svg.open_group("class=\"travel\" " + travel_style(runs.plan));
    MovePaths paths(svg, runs);
    std::size_t number = 0;
    for (std::size_t r = 0; r < runs.runs.size(); ++r) {
        const OrderRun& run = runs.runs[r];
        const std::size_t moves = move_count(run.count, run.ends);
        std::size_t move = 0;
        each_move(runs.items, run.of(runs.order), run.ends,
                  [&](const giPoint3& from, const giPoint3& to) {
                      if (number % runs.plan.every_item == 0) {
                          const auto add = [&](const giPoint3& begin, const giPoint3& end) {
                              paths.add(runs.view.at(begin), runs.view.at(end), runs.group_of(r),
                                        colour_step(move, moves, runs.plan.colour_steps));
                          };
                          each_piece(from, to, run.ends, add);
                      }
                      ++move;
                      ++number;
                  });
    }
    paths.finish();
    svg.close_group();
}

LongestMove longest_move(const TravelRuns& runs) {
    LongestMove longest;
    for (std::size_t r = 0; r < runs.runs.size(); ++r) {
        const OrderRun& run = runs.runs[r];
        const TravelFigures figures = measure_travel(runs.items, run.of(runs.order), run.ends);
        if (figures.longest > longest.length) {
            longest = {{}, figures.longest, runs.group_of(r)};
            for (const giPoint3& place :
                 places_of_move(figures.longest_from, figures.longest_to, run.ends)) {
                longest.places.push_back(runs.view.at(place));
            }
        }
    }
    return longest;
}

void draw_longest_mark(nmk_draw::SvgDocument& svg, const std::vector<nmk_draw::SvgPoint>& places) {
    const std::string style =
        "class=\"longest\" stroke=\"#ffb300\" stroke-opacity=\"0.55\" stroke-width=\"9\" "
        "stroke-linecap=\"round\"";
    if (places.size() == 2) {
        svg.line(places[0], places[1], style);
        return;
    }
    nmk_draw::SvgPath path;
    for (std::size_t i = 1; i < places.size(); ++i) {
        path.line(places[i - 1], places[i]);
    }
    svg.path(path, style + " fill=\"none\" stroke-linejoin=\"round\"");
}

}  // namespace nmk_order
