// curve_picture: draws curves with their ends, tangents, control points and centres.

#include "commands/curve/curve_picture.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "commands/curve/curve_view.h"
#include "draw/end_marks.h"
#include "draw/fitted_text.h"
#include "draw/legend.h"
#include "text/number_format.h"

namespace nmk_curve {

namespace {

using nmk_draw::SvgDocument;
using nmk_draw::SvgPoint;

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double number_width = 74.0;  // left of the plot
constexpr double heading_height = 108.0;
constexpr double plot_width = 820.0;
constexpr double tangent_length = 64.0;
constexpr double arrow_length = 12.0;
constexpr double arrow_width = 4.5;

// Marks of more curves or points would hide them.
constexpr std::size_t most_marked_curves = 40;
constexpr std::size_t most_marked_points = 40;

// The curves in turn: the second colour tells a piece from its neighbours.
constexpr std::array<const char*, 2> colours = {"#2646be", "#d9772b"};
constexpr const char* hull_style =
    "fill=\"none\" stroke=\"#9aa5b1\" stroke-width=\"1.5\" stroke-dasharray=\"5 4\"";
constexpr const char* tangent_colour = "#7b3fa0";
constexpr const char* centre_style = "stroke=\"#c4144b\" stroke-width=\"2\"";
constexpr const char* found_style =
    "class=\"found\" stroke=\"#c4144b\" stroke-width=\"2.5\" stroke-dasharray=\"2 3\"";

std::string curve_style(std::size_t number) {
    return std::string("class=\"curve\" fill=\"none\" stroke=\"") +
           colours[number % colours.size()] +
           "\" stroke-width=\"2.5\" stroke-linejoin=\"round\" stroke-linecap=\"round\"";
}

nmk_draw::SvgPath path_through(const std::vector<SvgPoint>& points) {
    nmk_draw::SvgPath path;
    for (std::size_t i = 1; i < points.size(); ++i) path.line(points[i - 1], points[i]);
    if (points.size() == 1) path.dot(points[0]);
    return path;
}

void draw_cross(SvgDocument& svg, SvgPoint at) {
    constexpr double half = 6.0;
    svg.line({at.x - half, at.y}, {at.x + half, at.y}, centre_style);
    svg.line({at.x, at.y - half}, {at.x, at.y + half}, centre_style);
}

void draw_control_mark(SvgDocument& svg, SvgPoint at) {
    svg.rectangle({at.x - 3.5, at.y - 3.5}, 7.0, 7.0,
                  "class=\"control\" fill=\"#ffffff\" stroke=\"#52606d\" stroke-width=\"1.5\"");
}

void draw_sample_mark(SvgDocument& svg, SvgPoint at) {
    svg.circle(at, 3.5, "class=\"sample\" fill=\"#ffffff\" stroke=\"#1f2933\"");
}

void draw_found_mark(SvgDocument& svg, SvgPoint at) {
    svg.circle(at, 5.0, "class=\"found\" fill=\"#c4144b\" stroke=\"#ffffff\"");
}

/// An arrow of this direction in the picture.
void draw_arrow(SvgDocument& svg, SvgPoint from, SvgPoint direction, double length) {
    const SvgPoint tip{from.x + direction.x * length, from.y + direction.y * length};
    const SvgPoint neck{tip.x - direction.x * arrow_length, tip.y - direction.y * arrow_length};
    const SvgPoint aside{-direction.y * arrow_width, direction.x * arrow_width};
    nmk_draw::SvgPath arrow;
    arrow.line(from, tip);
    arrow.line({neck.x + aside.x, neck.y + aside.y}, tip);
    arrow.line(tip, {neck.x - aside.x, neck.y - aside.y});
    svg.path(arrow, std::string("class=\"tangent\" fill=\"none\" stroke-width=\"2\" stroke=\"") +
                        tangent_colour + "\"");
}

/// What one picture shows, for its legend.
struct Shown {
    bool ends = false, tangents = false, control_points = false, points = false, centres = false;
};

class PictureWriter {
  public:
    PictureWriter(const CurveScene& scene, SvgDocument& svg, const CurveView& view)
        : m_scene(scene), m_svg(svg), m_view(view) {}

    void draw() {
        if (m_scene.curves.size() <= most_marked_curves) draw_control_points();
        for (std::size_t i = 0; i < m_scene.curves.size(); ++i) {
            m_svg.path(path_through(drawn_points(*m_scene.curves[i], m_view)), curve_style(i));
        }
        if (m_scene.curves.size() <= most_marked_curves) draw_marks();
        for (const giPoint3& point : m_scene.samples) draw_sample_mark(m_svg, m_view.at(point));
        if (m_scene.found) draw_found(*m_scene.found);
    }

    const Shown& shown() const { return m_shown; }

  private:
    void draw_control_points() {
        for (const CurveFacts& facts : m_scene.facts) {
            const std::size_t count = facts.control_points.size();
            if (count == 0 || count > most_marked_points) continue;
            std::vector<SvgPoint> points;
            for (const giPoint3& point : facts.control_points) points.push_back(m_view.at(point));
            if (facts.degree) m_svg.path(path_through(points), hull_style);
            for (const SvgPoint& point : points) draw_control_mark(m_svg, point);
            (facts.degree ? m_shown.control_points : m_shown.points) = true;
        }
    }

    void draw_marks() {
        for (const CurveFacts& facts : m_scene.facts) {
            if (facts.centre.is_set()) {
                draw_cross(m_svg, m_view.at(facts.centre));
                m_shown.centres = true;
            }
            draw_tangent(facts.start, facts.start_tangent);
            draw_tangent(facts.end, facts.end_tangent);
            draw_ends(facts);
        }
    }

    void draw_ends(const CurveFacts& facts) {
        if (facts.end.is_set()) nmk_draw::draw_end_mark(m_svg, m_view.at(facts.end));
        if (facts.start.is_set()) nmk_draw::draw_start_mark(m_svg, m_view.at(facts.start));
        m_shown.ends = m_shown.ends || facts.start.is_set() || facts.end.is_set();
    }

    /// Not for many curves, whose arrows would cover each other.
    void draw_tangent(const giPoint3& at, const giUnitVec3& tangent) {
        constexpr std::size_t most_with_tangents = 3;
        if (!at.is_set() || !tangent.is_set() || m_scene.curves.size() > most_with_tangents) return;
        const SvgPoint from = m_view.at(at);
        const SvgPoint to = m_view.at(at + tangent.vector() * (1.0 / m_view.scale()));
        const double length =
            std::sqrt((to.x - from.x) * (to.x - from.x) + (to.y - from.y) * (to.y - from.y));
        constexpr double seen_end_on = 0.1;  // of a pixel: the arrow would be a point
        if (length < seen_end_on) return;
        draw_arrow(m_svg, from, {(to.x - from.x) / length, (to.y - from.y) / length},
                   length * tangent_length);
        m_shown.tangents = true;
    }

    void draw_found(const FoundPlace& found) {
        m_svg.line(m_view.at(found.from), m_view.at(found.to), found_style);
        draw_found_mark(m_svg, m_view.at(found.from));
        draw_found_mark(m_svg, m_view.at(found.to));
    }

    const CurveScene& m_scene;
    SvgDocument& m_svg;
    const CurveView& m_view;
    Shown m_shown;
};

void add_curve_entries(nmk_draw::LegendEntries& entries, const CurveScene& scene) {
    for (std::size_t i = 0; i < scene.names.size(); ++i) {
        entries.push_back({scene.names[i], 30, [i](SvgDocument& svg, SvgPoint at) {
                               svg.line(at, {at.x + 30, at.y}, curve_style(i));
                           }});
    }
}

void add_mark_entry(nmk_draw::LegendEntries& entries, bool is_shown, const char* words,
                    void (*draw)(SvgDocument&, SvgPoint)) {
    if (!is_shown) return;
    entries.push_back({words, 14, [draw](SvgDocument& svg, SvgPoint at) {
                           draw(svg, {at.x + 7, at.y});
                       }});
}

nmk_draw::LegendEntries legend_of(const CurveScene& scene, const Shown& shown) {
    nmk_draw::LegendEntries entries;
    add_curve_entries(entries, scene);
    add_mark_entry(entries, shown.ends, "start", nmk_draw::draw_start_mark);
    add_mark_entry(entries, shown.ends, "end", nmk_draw::draw_end_mark);
    if (shown.tangents) {
        entries.push_back({"tangent", 30, [](SvgDocument& svg, SvgPoint at) {
                               draw_arrow(svg, at, {1.0, 0.0}, 30.0);
                           }});
    }
    add_mark_entry(entries, shown.control_points, "control point", draw_control_mark);
    add_mark_entry(entries, shown.points, "point", draw_control_mark);
    add_mark_entry(entries, shown.centres, "centre", draw_cross);
    add_mark_entry(entries, !scene.samples.empty(), "sample", draw_sample_mark);
    if (scene.found) {
        entries.push_back({scene.found->words, 14, [](SvgDocument& svg, SvgPoint at) {
                               draw_found_mark(svg, {at.x + 7, at.y});
                           }});
    }
    return entries;
}

void draw_heading(SvgDocument& svg, const CurveScene& scene, const CurveView& view) {
    const double width = number_width + plot_width;
    svg.text({margin, 44.0}, nmk_draw::fitted_text(scene.title, 24.0 * 1.1, width),
             "font-size=\"24\" font-weight=\"700\" fill=\"#1f2933\"");
    const std::string words = scene.subtitle + "; " + std::string(view.axes.words()) + ", in mm";
    svg.text({margin, 72.0}, nmk_draw::fitted_text(words, 16.0, width),
             "font-size=\"16\" fill=\"#6b7785\"");
    svg.line({margin, 86.0}, {margin + width, 86.0}, "stroke=\"#e3e7eb\"");
}

std::string clip_of(const nmk_draw::PlotFrame& frame) {
    using nmk_text::exact_number;
    return "<clipPath id=\"plot\"><rect x=\"" + exact_number(frame.corner.x) + "\" y=\"" +
           exact_number(frame.corner.y) + "\" width=\"" + exact_number(frame.width) +
           "\" height=\"" + exact_number(frame.height) + "\"/></clipPath>\n";
}

/// The curves, and what has to be seen beside them.
giBox3 box_of(const CurveScene& scene) {
    std::vector<giPoint3> points;
    for (const CurveFacts& facts : scene.facts) {
        if (facts.degree) {
            points.insert(points.end(), facts.control_points.begin(), facts.control_points.end());
        }
        if (facts.centre.is_set()) points.push_back(facts.centre);
    }
    if (scene.found) {
        points.push_back(scene.found->from);
        points.push_back(scene.found->to);
    }
    return shown_box(scene.curves, points);
}

}  // namespace

std::string curve_picture(const CurveScene& scene) {
    const CurveView view =
        view_of(box_of(scene), {margin + number_width, heading_height}, plot_width);
    const double width = 2 * margin + number_width + plot_width;
    SvgDocument svg;
    draw_heading(svg, scene, view);
    nmk_draw::draw_plot_frame(svg, view.frame);
    svg.raw(clip_of(view.frame));
    svg.open_group("clip-path=\"url(#plot)\"");
    PictureWriter writer(scene, svg, view);
    writer.draw();
    svg.close_group();
    const double legend_top = heading_height + view.frame.height + 36.0;
    const double bottom = nmk_draw::draw_legend(svg, {view.frame.corner.x, width - margin},
                                                legend_top, legend_of(scene, writer.shown()));
    return svg.str(width, bottom + 16.0, scene.title);
}

}  // namespace nmk_curve
