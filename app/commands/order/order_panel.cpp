// order_panel: one half of the picture: the cuts of a part and the travel between them.

#include "commands/order/order_panel.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "commands/order/order_figures.h"
#include "draw/colour_scale.h"
#include "draw/end_marks.h"
#include "draw/label_places.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

constexpr std::size_t colour_steps = 64;
constexpr std::size_t many_items = 2000;  // above, items are drawn small to show the travel
constexpr double min_radius = 1.5;        // pixels
constexpr double label_size = 14.0;

/// Half the width of a cut in pixels; a dot if the diameter of the tool is unknown.
double cut_radius(const PartView& view, const nmk_job::JobTool& tool, std::size_t items) {
    const double dot = items > many_items ? 0.8 : 2.5;
    return tool.diameter ? std::max(*tool.diameter / 2.0 * view.scale, min_radius) : dot;
}

/// A slot: the outline is a wider line under the fill.
void draw_slot(nmk_draw::SvgDocument& svg, const PartView& view, const nmk_job::JobItem& item,
               double radius, const std::string& colour) {
    const nmk_draw::SvgPoint from = view.at(item.start);
    const nmk_draw::SvgPoint to = view.at(*item.end);
    const auto stroke = [](const std::string& paint, double width) {
        return "stroke=\"" + paint + "\" stroke-width=\"" + nmk_text::short_number(width, 2) + "\"";
    };
    svg.line(from, to, stroke("#5c6b7a", 2 * radius + 1.0));
    svg.line(from, to, stroke(colour, std::max(2 * radius - 1.0, 1.0)));
}

/// The ends of a run in the drawing.
struct RunEnds {
    const std::string& name;
    nmk_draw::SvgPoint start, end;
};

nmk_draw::SvgPoint entry_at(const PartView& view, const TravelRuns& runs,
                            const nmk_job::JobCut& cut) {
    return view.at(nmk_job::entry_of(runs.items[cut.item], cut.reversed));
}

nmk_draw::SvgPoint exit_at(const PartView& view, const TravelRuns& runs,
                           const nmk_job::JobCut& cut) {
    return view.at(nmk_job::exit_of(runs.items[cut.item], cut.reversed));
}

std::vector<RunEnds> run_ends(const PartView& view, const TravelRuns& runs) {
    std::vector<RunEnds> ends;
    for (const OrderRun& run : runs.runs) {
        if (run.count > 0) {
            const std::span<const nmk_job::JobCut> cuts = run.of(runs.order);
            ends.push_back(
                {run.name, entry_at(view, runs, cuts.front()), exit_at(view, runs, cuts.back())});
        }
    }
    return ends;
}

/// A move, and its position among all moves, from 0 to 1.
struct Move {
    nmk_draw::SvgPoint from, to;
    double position;
};

std::vector<Move> moves_of(const PartView& view, const TravelRuns& runs) {
    std::vector<Move> moves;
    for (const OrderRun& run : runs.runs) {
        const std::span<const nmk_job::JobCut> cuts = run.of(runs.order);
        for (std::size_t i = 1; i < cuts.size(); ++i) {
            moves.push_back({exit_at(view, runs, cuts[i - 1]), entry_at(view, runs, cuts[i]), 0.0});
        }
    }
    const double last = moves.size() > 1 ? static_cast<double>(moves.size() - 1) : 1.0;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        moves[i].position = static_cast<double>(i) / last;
    }
    return moves;
}

std::string travel_width(std::size_t moves) {
    return moves > 3000 ? "0.8" : moves > 800 ? "1.2" : "1.7";
}

/// One path for each colour, in the order of travel.
void draw_moves(nmk_draw::SvgDocument& svg, const std::vector<Move>& moves) {
    svg.open_group("fill=\"none\" stroke-width=\"" + travel_width(moves.size()) +
                   "\" stroke-dasharray=\"4.5 2.5\" stroke-linejoin=\"round\"");
    const auto step_of = [](const Move& move) {
        return static_cast<std::size_t>(move.position * static_cast<double>(colour_steps - 1) +
                                        0.5);
    };
    for (std::size_t i = 0; i < moves.size();) {
        const std::size_t step = step_of(moves[i]);
        std::vector<nmk_draw::SvgPoint> pairs;
        for (; i < moves.size() && step_of(moves[i]) == step; ++i) {
            pairs.push_back(moves[i].from);
            pairs.push_back(moves[i].to);
        }
        const double position = static_cast<double>(step) / static_cast<double>(colour_steps - 1);
        svg.separate_lines(pairs, "stroke=\"" + nmk_draw::order_colour(position) + "\"");
    }
    svg.close_group();
}

struct LongestMove {
    nmk_draw::SvgPoint from, to;
    double length = 0.0;  // mm
};

LongestMove longest_move(const PartView& view, const TravelRuns& runs) {
    LongestMove longest;
    for (const OrderRun& run : runs.runs) {
        const std::span<const nmk_job::JobCut> cuts = run.of(runs.order);
        const TravelFigures figures = measure_travel(runs.items, cuts);
        if (figures.longest > longest.length) {
            longest = {exit_at(view, runs, cuts[figures.longest_after]),
                       entry_at(view, runs, cuts[figures.longest_after + 1]), figures.longest};
        }
    }
    return longest;
}

void draw_label(nmk_draw::SvgDocument& svg, const nmk_draw::LabelBox& box, const std::string& words,
                const std::string& colour) {
    svg.rectangle({box.left, box.top}, box.width, box.height,
                  "rx=\"3\" fill=\"#ffffff\" fill-opacity=\"0.88\"");
    svg.text({box.left + box.width / 2, box.top + box.height - 4.5}, words,
             "text-anchor=\"middle\" font-weight=\"600\" font-size=\"" +
                 nmk_text::short_number(label_size, 1) + "\" fill=\"" + colour + "\"");
}

/// Middles for a label along the move: on its middle first, then beside it.
std::vector<nmk_draw::SvgPoint> middles_along(const LongestMove& move) {
    std::vector<nmk_draw::SvgPoint> middles;
    for (const double up : {0.0, -16.0, 16.0, -32.0, 32.0}) {
        for (const double part : {0.5, 0.4, 0.6, 0.3, 0.7, 0.2, 0.8}) {
            middles.push_back({move.from.x + (move.to.x - move.from.x) * part,
                               move.from.y + (move.to.y - move.from.y) * part + up});
        }
    }
    return middles;
}

/// Middles for a label around a mark, nearest first.
std::vector<nmk_draw::SvgPoint> middles_around(nmk_draw::SvgPoint mark, double width) {
    std::vector<nmk_draw::SvgPoint> middles;
    for (const double distance : {1.0, 1.8, 2.6}) {
        const double x = width / 2 + 8.0 * distance;
        const double y = 17.0 * distance;
        for (const nmk_draw::SvgPoint& step : {nmk_draw::SvgPoint{0, -y},
                                               {0, y},
                                               {x, 0},
                                               {-x, 0},
                                               {x, -y},
                                               {-x, -y},
                                               {x, y},
                                               {-x, y}}) {
            middles.push_back({mark.x + step.x, mark.y + step.y});
        }
    }
    return middles;
}

nmk_draw::LabelBox around(nmk_draw::SvgPoint p, double radius) {
    return {p.x - radius, p.y - radius, 2 * radius, 2 * radius};
}

class Labels {
  public:
    Labels(nmk_draw::SvgDocument& svg, const nmk_draw::LabelBox& within)
        : m_svg(svg), m_places(within) {}

    void keep_off(nmk_draw::SvgPoint mark) {
        m_places.take(around(mark, nmk_draw::end_mark_radius + 1.0));
    }

    void write(const std::vector<nmk_draw::SvgPoint>& middles, const std::string& words,
               double width, const std::string& colour) {
        nmk_draw::LabelBox box;
        if (m_places.place(middles, width, label_size + 5.0, box)) {
            draw_label(m_svg, box, words, colour);
        }
    }

  private:
    nmk_draw::SvgDocument& m_svg;
    nmk_draw::LabelPlaces m_places;
};

double label_width(const std::string& words) {
    return nmk_draw::text_width(words, label_size) * 1.1 + 10.0;
}  // bold

/// Ends under starts, so that a run of one hole shows both.
void draw_run_marks(nmk_draw::SvgDocument& svg, const std::vector<RunEnds>& runs, Labels& labels) {
    for (const RunEnds& run : runs) {
        nmk_draw::draw_end_mark(svg, run.end);
        labels.keep_off(run.end);
    }
    for (const RunEnds& run : runs) {
        nmk_draw::draw_start_mark(svg, run.start);
        labels.keep_off(run.start);
    }
}

void write_run_names(const std::vector<RunEnds>& runs, Labels& labels) {
    if (runs.size() < 2) {
        return;
    }
    for (const RunEnds& run : runs) {
        const double width = label_width(run.name);
        labels.write(middles_around(run.start, width), run.name, width, "#1b5e20");
    }
}

}  // namespace

void draw_longest_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to) {
    svg.line(from, to,
             "stroke=\"#ffb300\" stroke-opacity=\"0.55\" stroke-width=\"9\" "
             "stroke-linecap=\"round\"");
}

void draw_cuts(nmk_draw::SvgDocument& svg, const PartView& view, const nmk_job::MachiningJob& job) {
    const std::size_t items = job.items.size();
    const auto draw_tool = [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
        const double radius = cut_radius(view, job.tools[tool], items);
        const std::string rim = items > many_items ? "0.4" : "1";
        svg.open_group("fill=\"" + nmk_draw::tool_colour(tool) +
                       "\" stroke=\"#5c6b7a\" stroke-width=\"" + rim +
                       "\" stroke-linecap=\"round\"");
        for (const nmk_job::JobCut& cut : cuts) {
            const nmk_job::JobItem& item = job.items[cut.item];
            if (item.end) {
                draw_slot(svg, view, item, radius, nmk_draw::tool_colour(tool));
            } else {
                svg.circle(view.at(item.start), radius);
            }
        }
        svg.close_group();
    };
    nmk_job::each_tool_run(job, nmk_job::order_by_tool(job), draw_tool);
}

void draw_travel(nmk_draw::SvgDocument& svg, const PartView& view, const nmk_draw::LabelBox& panel,
                 const TravelRuns& runs) {
    Labels labels(svg, panel);
    const std::vector<RunEnds> ends = run_ends(view, runs);
    const LongestMove longest = longest_move(view, runs);
    draw_moves(svg, moves_of(view, runs));
    if (longest.length > 0.0) {
        draw_longest_mark(svg, longest.from, longest.to);
    }
    draw_run_marks(svg, ends, labels);
    if (longest.length > 0.0) {
        const std::string words = "longest " + nmk_text::fixed_number(longest.length, 1) + " mm";
        labels.write(middles_along(longest), words, label_width(words), "#8a5300");
    }
    write_run_names(ends, labels);
}

}  // namespace nmk_order
