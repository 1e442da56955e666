// order_marks: where each tool starts and ends, the longest move, and their labels.

#include "commands/order/order_marks.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "commands/order/length_texts.h"
#include "commands/order/order_places.h"
#include "draw/end_marks.h"
#include "draw/fitted_text.h"
#include "draw/mark_group.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

constexpr double label_size = 14.0;
constexpr double label_height = label_size + 5.0;
constexpr double max_name_width = 130.0;
constexpr double longest_width = 11.0;  // of the mark of the longest move, and a little air
constexpr double max_small_mark = 4.0;  // the size of a mark without a label
constexpr std::size_t max_small_marks = 10'000;  // of each kind

constexpr const char* start_label_colour = "#1b5e20";
constexpr const char* end_label_colour = "#202124";
constexpr const char* longest_label_colour = "#8a5300";

/// The ends of a run in the drawing.
struct RunEnds {
    std::string name;
    std::size_t group;
    nmk_draw::SvgPoint start, end;
};

std::vector<RunEnds> run_ends(const TravelRuns& runs) {
    std::vector<RunEnds> ends;
    for (std::size_t r = 0; r < runs.runs.size(); ++r) {
        const std::span<const nmk_job::JobCut> cuts = runs.runs[r].of(runs.order);
        if (!cuts.empty()) {
            ends.push_back({nmk_draw::fitted_text(runs.runs[r].name, label_size, max_name_width),
                            runs.group_of(r), runs.entry_at(cuts.front()),
                            runs.exit_at(cuts.back())});
        }
    }
    return ends;
}

/// Middles for a label beside a line, on both sides of it, nearest to its middle first.
std::vector<nmk_draw::SvgPoint> middles_beside(const LongestMove& move, double width) {
    const double dx = move.to().x - move.from().x;
    const double dy = move.to().y - move.from().y;
    const double length = std::max(std::sqrt(dx * dx + dy * dy), 1e-9);
    const nmk_draw::SvgPoint normal{-dy / length, dx / length};
    // So far from the line the label only just touches the mark.
    const double reach =
        (std::abs(normal.x) * width + std::abs(normal.y) * label_height + longest_width) / 2 + 1.0;
    std::vector<nmk_draw::SvgPoint> middles;
    for (const double distance : {reach, reach + 12.0, reach + 30.0, reach + 60.0}) {
        for (const double part : {0.5, 0.4, 0.6, 0.3, 0.7, 0.2, 0.8, 0.1, 0.9}) {
            for (const double side : {-distance, distance}) {
                middles.push_back({move.from().x + dx * part + normal.x * side,
                                   move.from().y + dy * part + normal.y * side});
            }
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

double label_width(const std::string& words) {
    return nmk_draw::text_width(words, label_size) * 1.1 + 10.0;  // bold
}

class Labels {
  public:
    Labels(nmk_draw::SvgDocument& svg, const DrawingPlan& plan, const nmk_draw::LabelBox& within)
        : m_svg(svg), m_plan(plan), m_places(within) {}

    void keep_off(nmk_draw::SvgPoint mark) {
        m_places.take(around(mark, nmk_draw::end_mark_radius + 1.0));
    }
    void keep_off(const LongestMove& move) {
        for (std::size_t i = 1; i < move.places.size(); ++i) {
            m_places.take_line(move.places[i - 1], move.places[i], longest_width);
        }
    }

    /// Writes the words at the first middle that is free, as a part of the mark at `anchor`.
    void write(const std::vector<nmk_draw::SvgPoint>& middles, nmk_draw::SvgPoint anchor,
               std::size_t group, const std::string& words, const std::string& colour) {
        nmk_draw::LabelBox box;
        if (m_places.place(middles, label_width(words), label_height, box)) {
            box.left -= anchor.x;
            box.top -= anchor.y;
            nmk_draw::draw_mark(m_svg, anchor, m_plan.travel_attribute(group),
                                [&] { draw_label(box, words, colour); });
        }
    }

  private:
    void draw_label(const nmk_draw::LabelBox& box, const std::string& words,
                    const std::string& colour) {
        m_svg.rectangle({box.left, box.top}, box.width, box.height,
                        "class=\"label\" rx=\"3\" fill=\"#ffffff\" fill-opacity=\"0.88\"");
        m_svg.text({box.left + box.width / 2, box.top + box.height - 4.5}, words,
                   "text-anchor=\"middle\" font-weight=\"600\" font-size=\"" +
                       nmk_text::short_number(label_size, 1) + "\" fill=\"" + colour + "\"");
    }

    nmk_draw::SvgDocument& m_svg;
    const DrawingPlan& m_plan;
    nmk_draw::LabelPlaces m_places;
};

/// Ends under starts, so that a run of one hole shows both.
void draw_end_marks(nmk_draw::SvgDocument& svg, const DrawingPlan& plan,
                    const std::vector<RunEnds>& runs, Labels& labels) {
    for (const RunEnds& run : runs) {
        nmk_draw::draw_mark(svg, run.end, plan.travel_attribute(run.group),
                            [&] { nmk_draw::draw_end_mark(svg, {}); });
        labels.keep_off(run.end);
    }
    for (const RunEnds& run : runs) {
        nmk_draw::draw_mark(svg, run.start, plan.travel_attribute(run.group),
                            [&] { nmk_draw::draw_start_mark(svg, {}); });
        labels.keep_off(run.start);
    }
}

/// One path of dots for each group; `at` is the start or the end of a run.
template <class At>
void draw_small_marks(nmk_draw::SvgDocument& svg, const DrawingPlan& plan,
                      const std::vector<RunEnds>& runs, const std::string& style, At at) {
    const std::size_t every = runs.size() / max_small_marks + 1;
    const double size = std::min(max_small_mark, 2 * plan.max_dot_radius);
    for (std::size_t begin = 0; begin < runs.size();) {
        const std::size_t group = runs[begin].group;
        nmk_draw::SvgPath path(1);
        std::size_t i = begin;
        for (; i < runs.size() && runs[i].group == group; ++i) {
            if (i % every == 0) {
                path.dot(at(runs[i]));
            }
        }
        svg.open_group(plan.travel_attribute(group));
        svg.path(path,
                 style + " fill=\"none\" stroke-width=\"" + nmk_text::short_number(size, 1) + "\"");
        svg.close_group();
        begin = i;
    }
}

void write_names(const std::vector<RunEnds>& runs, Labels& labels) {
    if (runs.size() < 2) {
        return;
    }
    for (const RunEnds& run : runs) {
        labels.write(middles_around(run.start, label_width(run.name)), run.start, run.group,
                     run.name, start_label_colour);
    }
    for (const RunEnds& run : runs) {
        labels.write(middles_around(run.end, label_width(run.name)), run.end, run.group, run.name,
                     end_label_colour);
    }
}

}  // namespace

void draw_marks(nmk_draw::SvgDocument& svg, const nmk_draw::LabelBox& panel,
                const TravelRuns& runs) {
    Labels labels(svg, runs.plan, panel);
    const std::vector<RunEnds> ends = run_ends(runs);
    const LongestMove longest = longest_move(runs);
    if (longest.length > 0.0) {
        svg.open_group(runs.plan.travel_attribute(longest.group));
        draw_longest_mark(svg, longest.places);
        svg.close_group();
        labels.keep_off(longest);
    }
    draw_places(svg, travel_places(runs.runs), runs.view);
    if (runs.plan.has_labels()) {
        draw_end_marks(svg, runs.plan, ends, labels);
    } else {
        draw_small_marks(svg, runs.plan, ends, "stroke=\"#202124\" stroke-linecap=\"square\"",
                         [](const RunEnds& run) { return run.end; });
        draw_small_marks(svg, runs.plan, ends, "stroke=\"#1e8e3e\" stroke-linecap=\"round\"",
                         [](const RunEnds& run) { return run.start; });
    }
    if (longest.length > 0.0) {
        const LengthTexts text(runs.units);
        const std::string words = "longest " + text.travel_with_unit(longest.length);
        const nmk_draw::SvgPoint middle{(longest.from().x + longest.to().x) / 2,
                                        (longest.from().y + longest.to().y) / 2};
        labels.write(middles_beside(longest, label_width(words)), middle, longest.group, words,
                     longest_label_colour);
    }
    if (runs.plan.has_labels()) {
        write_names(ends, labels);
    }
}

}  // namespace nmk_order
