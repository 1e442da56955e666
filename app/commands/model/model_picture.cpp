// model_picture: a triangle model as an SVG drawing: its image, free edges, a scale and a legend.

#include "commands/model/model_picture.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "draw/fitted_text.h"
#include "draw/round_length.h"
#include "files/base_name.h"
#include "text/number_format.h"

namespace nmk_model {

namespace {

using nmk_draw::SvgDocument;
using nmk_draw::SvgPoint;

// The layout, in pixels.
constexpr double margin = 32.0;
constexpr double min_width = 760.0;  // for heading and legend
constexpr double heading_height = 118.0;
constexpr double axes_size = 44.0;
constexpr double scale_height = 64.0;

std::string hexadecimal(const Colour& colour) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", colour[0], colour[1], colour[2]);
    return text;
}

nmk_draw::LegendEntry patch_entry(const std::string& words, const Colour& colour) {
    return {words, 16, [colour](SvgDocument& svg, SvgPoint at) {
                svg.rectangle({at.x, at.y - 8}, 16, 16,
                              "rx=\"3\" fill=\"" + hexadecimal(colour) + "\"");
            }};
}

nmk_draw::LegendEntry line_entry(const std::string& words, const Colour& colour,
                                 const std::string& style) {
    return {words, 32, [colour, style](SvgDocument& svg, SvgPoint at) {
                svg.line(at, {at.x + 32, at.y}, "stroke=\"" + hexadecimal(colour) + "\" " + style);
            }};
}

void draw_heading(SvgDocument& svg, nmk_draw::PictureColumn column, const ModelFigures& figures,
                  ViewSide side) {
    const auto fitted = [&](const std::string& words, double size) {
        return nmk_draw::fitted_text(words, size, column.width());
    };
    const std::string from = nmk_shell::name_of_choice<ViewSide, ViewSide>(side, view_sides());
    svg.text({column.left, 44.0}, fitted(nmk_files::base_name(figures.name), 26.0 * 1.1),
             "font-size=\"26\" font-weight=\"700\" fill=\"#1f2933\"");
    svg.text({column.left, 70.0}, fitted(model_summary(figures) + ", view " + from, 17.0),
             "font-size=\"17\" fill=\"#1f2933\"");
    const std::string colour = figures.is_closed() ? "#6b7785" : "#a23b00";
    svg.text({column.left, 94.0}, fitted(fault_summary(figures), 15.0),
             "font-size=\"15\" fill=\"" + colour + "\"");
    svg.line({column.left, 106.0}, {column.right, 106.0}, "stroke=\"#e3e7eb\"");
}

double shown(int pixels) { return pixels / static_cast<double>(image_fineness); }

void draw_image(SvgDocument& svg, SvgPoint corner, const nmk_draw::PixelImage& image) {
    const auto number = [](double value) { return nmk_text::short_number(value, 1); };
    svg.raw("<image x=\"" + number(corner.x) + "\" y=\"" + number(corner.y) + "\" width=\"" +
            number(shown(image.width)) + "\" height=\"" + number(shown(image.height)) +
            "\" href=\"" + nmk_draw::png_address(image) + "\"/>\n");
}

/// The directions of X, Y and Z; one that points at the viewer or away has no line.
void draw_axes(SvgDocument& svg, SvgPoint origin, ViewSide side) {
    const ViewAxes axes = view_axes(side);
    const struct {
        const char* name;
        const char* colour;
        giVector3 direction;
    } shown[] = {
        {"X", "#b3261e", {1, 0, 0}}, {"Y", "#1b7f3b", {0, 1, 0}}, {"Z", "#2646be", {0, 0, 1}}};
    for (const auto& axis : shown) {
        const double x = axes.right.dot(axis.direction);
        const double y = -axes.up.dot(axis.direction);
        if (x * x + y * y < 0.01) continue;
        const std::string colour = std::string("\"") + axis.colour + "\"";
        constexpr double line = 30.0;
        svg.line(origin, {origin.x + line * x, origin.y + line * y},
                 "stroke-width=\"2.5\" stroke-linecap=\"round\" stroke=" + colour);
        svg.text({origin.x + (line + 10.0) * x, origin.y + (line + 10.0) * y + 5.0}, axis.name,
                 "font-size=\"14\" font-weight=\"700\" text-anchor=\"middle\" fill=" + colour);
    }
}

/// A bar of a round length, at most a quarter of the image or 200 pixels wide.
void draw_scale(SvgDocument& svg, SvgPoint at, const ShadedView& view) {
    const double pixels_a_mm = view.pixels_a_mm / image_fineness;
    const double room = std::clamp(shown(view.image.width) / 4.0, 40.0, 200.0);
    const double length = nmk_draw::round_length(room / pixels_a_mm);
    const double right = at.x + length * pixels_a_mm;
    svg.separate_lines({at,
                        {right, at.y},
                        {at.x, at.y - 5},
                        {at.x, at.y + 5},
                        {right, at.y - 5},
                        {right, at.y + 5}},
                       "class=\"scale\" stroke=\"#1f2933\" stroke-width=\"2\" fill=\"none\"");
    svg.text({right + 9.0, at.y + 5.0}, nmk_text::readable_number(length) + " mm",
             "font-size=\"15\" fill=\"#1f2933\"");
}

/// "1 free edge", "2 free edges"
std::string counted(std::int64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

std::string model_summary(const ModelFigures& figures) {
    const giVector3 size = figures.box.max() - figures.box.min();
    const auto text = [](double value) { return nmk_text::short_number(value, 3); };
    return counted(figures.triangles, "triangle", "triangles") + ", " + text(size.x) + " x " +
           text(size.y) + " x " + text(size.z) + " mm";
}

std::string fault_summary(const ModelFigures& figures) {
    std::string faults;
    const auto add = [&](std::int64_t count, const char* one, const char* many) {
        if (count > 0) faults += (faults.empty() ? "" : ", ") + counted(count, one, many);
    };
    add(figures.free_edges, "free edge", "free edges");
    add(figures.crowded_edges, "edge of more than two triangles",
        "edges of more than two triangles");
    add(figures.opposed_edges, "edge wound against each other", "edges wound against each other");
    add(figures.degenerate_triangles, "degenerate triangle", "degenerate triangles");
    add(figures.shells > 1 ? figures.shells : 0, "shell", "shells");
    const std::string closed = figures.is_closed() ? "closed" : "not closed";
    return faults.empty() ? closed : closed + ": " + faults;
}

nmk_draw::LegendEntries model_legend(const LegendParts& parts) {
    nmk_draw::LegendEntries entries = {patch_entry("outside", outside_colour)};
    if (parts.inside) entries.push_back(patch_entry("inside", inside_colour));
    if (parts.sharp) {
        entries.push_back(line_entry("sharp edge", sharp_edge_colour, "stroke-width=\"1.2\""));
    }
    if (parts.free) {
        entries.push_back(line_entry("free edge", free_edge_colour, "stroke-width=\"2.5\""));
    }
    if (parts.hidden_free) {
        entries.push_back(line_entry("free edge, hidden", hidden_edge_colour,
                                     "stroke-width=\"1.6\" stroke-dasharray=\"5 5\""));
    }
    return entries;
}

std::string model_picture(const ModelFigures& figures, const ShadedView& view, ViewSide side) {
    const double width = std::max(shown(view.image.width), min_width);
    const nmk_draw::PictureColumn column{margin, margin + width};
    SvgDocument svg;
    draw_heading(svg, column, figures, side);
    draw_image(svg, {column.left + (width - shown(view.image.width)) / 2, heading_height},
               view.image);
    const double below = heading_height + shown(view.image.height) + scale_height;
    draw_axes(svg, {column.left + axes_size, below - axes_size / 2}, side);
    draw_scale(svg, {column.left + 3 * axes_size, below - axes_size / 2}, view);
    const double bottom =
        nmk_draw::draw_legend(svg, column, below + 24.0,
                              model_legend({view.shows_sharp, view.shows_inside,
                                            figures.free_edges > 0, view.has_hidden_free}));
    return svg.str(column.right + margin, bottom + margin / 2,
                   nmk_files::base_name(figures.name) + ": " + model_summary(figures));
}

}  // namespace nmk_model
