// polynomial_picture: the curve of a polynomial, and its real roots on the axis.

#include "commands/solve/polynomial_picture.h"

#include <algorithm>
#include <cmath>

#include "draw/fitted_text.h"
#include "draw/label_places.h"
#include "draw/legend.h"
#include "draw/plot_frame.h"
#include "text/number_format.h"

namespace nmk_solve {

namespace {

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double number_width = 74.0;  // left of the plot
constexpr double heading_height = 108.0;
constexpr double plot_width = 820.0;
constexpr double plot_height = 440.0;
constexpr int samples = 600;

constexpr double x_margin = 0.35;  // of the range of the points to show, on either side
constexpr double y_margin = 0.12;
constexpr double max_beyond = 1.2;  // of that range, the part of the curve past its turning points

double largest_size(const std::vector<double>& values) {
    double largest = 0.0;
    for (const double value : values) {
        largest = std::max(largest, std::abs(value));
    }
    return largest;
}

/// The roots of the slope, ascending, each once.
std::vector<double> level_points(const std::vector<double>& slope) {
    std::vector<double> points;
    // The slope of a polynomial can overflow; where it is level is then not known.
    if (!std::all_of(slope.begin(), slope.end(), [](double c) { return std::isfinite(c); })) {
        return points;
    }
    for (const Solution& level : solve_polynomial(slope).solutions) {
        points.push_back(level.values[0]);
    }
    std::erase_if(points, [](double x) { return !std::isfinite(x); });
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

/// The x of the points at which the slope changes its sign. It keeps it between two of its roots,
/// so a point between them shows it: at the saddle of x^3 the sign is the same on either side.
std::vector<double> turning_points(const std::vector<double>& coefficients) {
    const std::vector<double> slope = derivative_of(coefficients);
    const std::vector<double> level = level_points(slope);
    std::vector<double> turns;
    for (std::size_t i = 0; i < level.size(); ++i) {
        const double aside = std::max(std::abs(level[i]), 1.0);
        const double before = i > 0 ? (level[i - 1] + level[i]) / 2 : level[i] - aside;
        const double after =
            i + 1 < level.size() ? (level[i] + level[i + 1]) / 2 : level[i] + aside;
        const bool was_rising = polynomial_value(slope, before) > 0.0;
        if (was_rising != (polynomial_value(slope, after) > 0.0)) {
            turns.push_back(level[i]);
        }
    }
    return turns;
}

/// The x of roots and turning points.
std::vector<double> points_to_show(const std::vector<double>& turns, const Answer& answer) {
    std::vector<double> points = turns;
    for (const Solution& root : answer.solutions) {
        points.push_back(root.values[0]);
    }
    std::erase_if(points, [](double x) { return !std::isfinite(x); });
    return points;
}

nmk_draw::PlotRange x_range(const std::vector<double>& points) {
    if (points.empty()) {
        return {-1.0, 1.0};
    }
    const auto [low, high] = std::minmax_element(points.begin(), points.end());
    const double size = std::max(largest_size(points), 1e-300);
    const double span = *high - *low;
    // A single point, or several that the drawing cannot separate.
    const double air = span > 1e-9 * size ? span * x_margin : size;
    const double shown = air > 1e-200 ? air : 1.0;
    return {*low - shown, *high + shown};
}

nmk_draw::PlotRange y_range(const std::vector<double>& coefficients,
                            const std::vector<double>& points, const nmk_draw::PlotRange& x) {
    double low = 0.0;
    double high = 0.0;
    for (const double point : points) {
        const double value = polynomial_value(coefficients, point);
        low = std::min(low, value);
        high = std::max(high, value);
    }
    const double left = polynomial_value(coefficients, x.low);
    const double right = polynomial_value(coefficients, x.high);
    const double edge_low = std::min({left, right, low});
    const double edge_high = std::max({left, right, high});
    const double beyond = (high - low) * max_beyond;
    // The values at roots are only rounding errors.
    const bool is_flat = high - low <= 1e-9 * (edge_high - edge_low);
    nmk_draw::PlotRange range{is_flat ? edge_low : std::max(edge_low, low - beyond),
                              is_flat ? edge_high : std::min(edge_high, high + beyond)};
    const double span = range.span() > 0.0 ? range.span() : 2.0;
    range.low -= span * y_margin;
    range.high += span * y_margin;
    return range;
}

bool is_drawable(const nmk_draw::PlotRange& range) {
    return std::isfinite(range.span()) && std::isfinite(range.low) && range.span() > 0.0;
}

/// The curve, interrupted at values that are not finite.
std::vector<nmk_draw::SvgPoint> curve_pairs(const std::vector<double>& coefficients,
                                            const nmk_draw::PlotFrame& frame) {
    const auto point = [&](int i) {
        const double x = frame.x.low + frame.x.span() * i / samples;
        return frame.at(x, polynomial_value(coefficients, x));
    };
    // Values far out of range are clamped, for viewers that cannot draw them.
    const auto near = [&](nmk_draw::SvgPoint p) {
        const double far = 4 * frame.height;
        return nmk_draw::SvgPoint{p.x, std::clamp(p.y, frame.corner.y - far, frame.corner.y + far)};
    };
    std::vector<nmk_draw::SvgPoint> pairs;
    for (int i = 0; i < samples; ++i) {
        const nmk_draw::SvgPoint from = point(i);
        const nmk_draw::SvgPoint to = point(i + 1);
        if (std::isfinite(from.y) && std::isfinite(to.y)) {
            pairs.insert(pairs.end(), {near(from), near(to)});
        }
    }
    return pairs;
}

/// A root, and how many roots the drawing cannot separate from it.
struct RootMark {
    double x;
    int count;
};

std::vector<RootMark> root_marks(const Answer& answer, const nmk_draw::PlotFrame& frame) {
    std::vector<RootMark> marks;
    for (const Solution& root : answer.solutions) {
        const double x = root.values[0];
        // Roots nearer than a hundredth of a pixel share one mark.
        const bool is_same =
            !marks.empty() && std::abs(x - marks.back().x) <= frame.x.span() / frame.width / 100.0;
        if (is_same) {
            ++marks.back().count;
        } else {
            marks.push_back({x, 1});
        }
    }
    return marks;
}

/// Middles for a label: beside the curve first, or on the other side of the axis if the curve only
/// touches it; then above and below.
std::vector<nmk_draw::SvgPoint> label_middles(nmk_draw::SvgPoint at, double width,
                                              const std::vector<double>& coefficients,
                                              const RootMark& mark) {
    const std::vector<double> slope = derivative_of(coefficients);
    const double rise = polynomial_value(slope, mark.x);
    const double bend = polynomial_value(derivative_of(slope), mark.x);
    const double aside = (rise > 0.0 ? -1.0 : 1.0) * (width / 2 + 2.0);
    std::vector<nmk_draw::SvgPoint> middles;
    if (mark.count > 1) {
        middles = {{at.x, at.y + (bend > 0.0 ? 22.0 : -22.0)}};
    } else {
        middles = {{at.x + aside, at.y - 17.0}, {at.x - aside, at.y + 17.0}};
    }
    for (const double y : {-22.0, 22.0, -44.0, 44.0, -66.0, 66.0}) {
        for (const double x : {0.0, 0.5, -0.5}) {
            middles.push_back({at.x + x * width, at.y + y});
        }
    }
    return middles;
}

void draw_root_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    svg.circle(at, 6.0, "class=\"root\" fill=\"#c4144b\" stroke=\"#ffffff\" stroke-width=\"1.5\"");
}

/// A ring that is seen around the mark of a root, too.
void draw_turning_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    svg.circle(at, 8.0,
               "class=\"turning\" fill=\"#ffffff\" stroke=\"#2646be\" stroke-width=\"2.5\"");
}

void draw_turning_marks(nmk_draw::SvgDocument& svg, const nmk_draw::PlotFrame& frame,
                        const std::vector<double>& coefficients, const std::vector<double>& turns) {
    for (const double x : turns) {
        draw_turning_mark(svg, frame.at(x, polynomial_value(coefficients, x)));
    }
}

constexpr const char* curve_style =
    "class=\"curve\" fill=\"none\" stroke=\"#2646be\" stroke-width=\"2.5\" "
    "stroke-linejoin=\"round\"";

nmk_draw::LegendEntries curve_legend(const Answer& answer, bool has_turns) {
    using nmk_draw::SvgDocument;
    using nmk_draw::SvgPoint;
    nmk_draw::LegendEntries entries = {{"value", 30, [](SvgDocument& svg, SvgPoint at) {
                                            svg.line(at, {at.x + 30, at.y}, curve_style);
                                        }}};
    if (!answer.solutions.empty()) {
        entries.push_back({"root", 14, [](SvgDocument& svg, SvgPoint at) {
                               draw_root_mark(svg, {at.x + 7, at.y});
                           }});
    }
    if (has_turns) {
        entries.push_back({"turning point", 20, [](SvgDocument& svg, SvgPoint at) {
                               draw_turning_mark(svg, {at.x + 10, at.y});
                           }});
    }
    return entries;
}

void draw_roots(nmk_draw::SvgDocument& svg, const nmk_draw::PlotFrame& frame,
                const std::vector<double>& coefficients, const Answer& answer) {
    nmk_draw::LabelPlaces places({frame.corner.x, frame.corner.y, frame.width, frame.height});
    const std::vector<RootMark> marks = root_marks(answer, frame);
    for (const RootMark& mark : marks) {
        const nmk_draw::SvgPoint at = frame.at(mark.x, 0.0);
        draw_root_mark(svg, at);
        places.take({at.x - 7.0, at.y - 7.0, 14.0, 14.0});
    }
    for (const RootMark& mark : marks) {
        const nmk_draw::SvgPoint at = frame.at(mark.x, 0.0);
        const std::string words =
            nmk_draw::plot_number(mark.x) +
            (mark.count > 1 ? ", " + std::to_string(mark.count) + " times" : "");
        const double width = nmk_draw::text_width(words, 14.0) * 1.1 + 14.0;
        const std::vector<nmk_draw::SvgPoint> middles =
            label_middles(at, width, coefficients, mark);
        nmk_draw::LabelBox box;
        if (places.place(middles, width, 20.0, box)) {
            svg.rectangle({box.left, box.top}, box.width, box.height,
                          "rx=\"3\" fill=\"#ffffff\" fill-opacity=\"0.88\"");
            svg.text({box.left + box.width / 2, box.top + 15.0}, words,
                     "text-anchor=\"middle\" font-weight=\"600\" font-size=\"14\" "
                     "fill=\"#a01040\"");
        }
    }
}

void draw_heading(nmk_draw::SvgDocument& svg, const Answer& answer) {
    const double width = number_width + plot_width;
    svg.text({margin, 44.0}, nmk_draw::fitted_text(answer.problem, 24.0 * 1.1, width),
             "font-size=\"24\" font-weight=\"700\" fill=\"#1f2933\"");
    const std::size_t count = answer.solutions.size();
    const std::string words = count == 0   ? "no real root"
                              : count == 1 ? "1 real root"
                                           : std::to_string(count) + " real roots";
    const std::string noted = answer.note.empty() ? words : words + "; " + answer.note;
    svg.text({margin, 72.0}, nmk_draw::fitted_text(noted, 16.0, width),
             "font-size=\"16\" fill=\"#6b7785\"");
    svg.line({margin, 86.0}, {margin + width, 86.0}, "stroke=\"#e3e7eb\"");
}

}  // namespace

std::string polynomial_picture(const std::vector<double>& coefficients, const Answer& answer) {
    const double width = 2 * margin + number_width + plot_width;
    const double legend_top = heading_height + plot_height + 36.0;
    const double height = legend_top + 42.0;
    nmk_draw::SvgDocument svg;
    draw_heading(svg, answer);
    const std::vector<double> turns = turning_points(coefficients);
    const std::vector<double> points = points_to_show(turns, answer);
    nmk_draw::PlotFrame frame;
    frame.corner = {margin + number_width, heading_height};
    frame.width = plot_width;
    frame.height = plot_height;
    frame.x = x_range(points);
    frame.y = y_range(coefficients, points, frame.x);
    if (!is_drawable(frame.x) || !is_drawable(frame.y)) {
        svg.text({margin, heading_height + 24.0}, "The values are too large to be drawn.",
                 "font-size=\"16\" fill=\"#3c4654\"");
        return svg.str(width, height, answer.problem);
    }
    nmk_draw::draw_plot_frame(svg, frame);
    const std::string plot = "x=\"" + nmk_text::exact_number(frame.corner.x) + "\" y=\"" +
                             nmk_text::exact_number(frame.corner.y) + "\" width=\"" +
                             nmk_text::exact_number(frame.width) + "\" height=\"" +
                             nmk_text::exact_number(frame.height) + "\"";
    svg.raw("<clipPath id=\"plot\"><rect " + plot + "/></clipPath>\n");
    svg.open_group("clip-path=\"url(#plot)\"");
    svg.separate_lines(curve_pairs(coefficients, frame), curve_style);
    svg.close_group();
    draw_turning_marks(svg, frame, coefficients, turns);
    draw_roots(svg, frame, coefficients, answer);
    nmk_draw::draw_legend(svg, {frame.corner.x, width - margin}, legend_top,
                          curve_legend(answer, !turns.empty()));
    return svg.str(width, height, answer.problem);
}

}  // namespace nmk_solve
