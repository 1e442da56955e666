// model_page: one self-contained HTML page in which a model is turned, with its figures.

#include "commands/model/model_page.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "commands/model/drawn_edges.h"
#include "commands/model/figures_text.h"
#include "commands/model/model_picture.h"
#include "commands/model/reduced_mesh.h"
#include "draw/html_controls.h"
#include "draw/html_frame.h"
#include "files/base_name.h"
#include "text/base64.h"
#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_model {

namespace {

// Places are sent in so many steps of the model's largest size.
constexpr double steps_of_size = 65535.0;

template <class Number>
void put(std::string& bytes, Number number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

/// Three 16-bit numbers for each node: its place in the box in steps.
std::string node_bytes(const WeldedMesh& mesh, const giBox3& box) {
    const giVector3 size = box.max() - box.min();
    const double largest = std::max({size.x, size.y, size.z});
    const double steps = largest > 0.0 ? steps_of_size / largest : 0.0;
    std::string bytes;
    for (const giPoint3& node : mesh.nodes) {
        const giVector3 at = (node - box.min()) * steps;
        for (const double value : {at.x, at.y, at.z}) {
            put(bytes, static_cast<std::uint16_t>(
                           std::clamp(std::floor(value + 0.5), 0.0, steps_of_size)));
        }
    }
    return bytes;
}

/// A 32-bit number for each corner.
std::string triangle_bytes(const WeldedMesh& mesh) {
    std::string bytes;
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (const std::uint32_t node : triangle) put(bytes, node);
    }
    return bytes;
}

/// Two 32-bit numbers for each edge, of at most max_page_edges.
std::string edge_bytes(const std::vector<EdgeEnds>& edges) {
    std::string bytes;
    for (std::size_t i = 0; i < std::min(edges.size(), max_page_edges); ++i) {
        put(bytes, edges[i].first);
        put(bytes, edges[i].second);
    }
    return bytes;
}

std::string attribute(const char* name, const std::string& bytes) {
    return std::string(" ") + name + "=\"" + nmk_text::base64_text(bytes) + "\"";
}

/// "1 0 0 0 0 1 0 -1 0": to the right, upwards, towards the viewer.
std::string axes_text(ViewSide side) {
    const ViewAxes axes = view_axes(side);
    std::string text;
    for (const giVector3& axis : {axes.right, axes.up, axes.towards}) {
        for (const double value : {axis.x, axis.y, axis.z}) {
            text += (text.empty() ? "" : " ") + nmk_text::short_number(value, 6);
        }
    }
    return text;
}

std::string toolbar() {
    std::string text =
        "<div class=\"toolbar\" hidden=\"\">\n"
        "<div class=\"group\" role=\"group\" aria-label=\"Side\">\n";
    for (const auto& side : view_sides()) {
        text += "<button type=\"button\" data-axes=\"" + axes_text(side.value) + "\">" +
                std::string(side.name) + "</button>\n";
    }
    return text +
           "</div>\n<div class=\"group\" role=\"group\" aria-label=\"Zoom\">\n"
           "<button type=\"button\" data-model-zoom=\"1.4\" aria-label=\"Zoom in\">+</button>\n"
           "<button type=\"button\" data-model-zoom=\"0.7142857\" aria-label=\"Zoom out\">"
           "\xE2\x88\x92</button>\n"
           "<button type=\"button\" data-model-zoom=\"whole\">Whole model</button>\n"
           "</div>\n</div>\n";
}

std::string model_canvas(const ModelFigures& figures, const WeldedMesh& mesh, ViewSide side) {
    giBox3 box;
    for (const giPoint3& node : mesh.nodes) box.add(node);
    const DrawnEdges edges = drawn_edges(mesh);
    const std::string label =
        nmk_text::xml_text(model_summary(figures) + "; " + fault_summary(figures));
    return "<figure>\n<div class=\"view\"><canvas class=\"model\" tabindex=\"0\" role=\"img\" "
           "aria-label=\"" +
           label + "; arrows turn, plus and minus zoom\" data-axes=\"" + axes_text(side) +
           "\"></canvas></div>\n<div class=\"model-data\" hidden=\"\"" +
           attribute("data-nodes", node_bytes(mesh, box)) +
           attribute("data-triangles", triangle_bytes(mesh)) +
           attribute("data-sharp", edge_bytes(edges.sharp)) +
           attribute("data-free", edge_bytes(edges.free)) + "></div>\n</figure>\n";
}

constexpr const char* hint =
    "<p class=\"hint\">Drag to turn; with Shift to move. Zoom with two fingers or Ctrl and the "
    "wheel. With the keyboard: arrows, +, - and 0.</p>\n"
    "<noscript><p>The model is drawn by a script, which this browser does not "
    "run.</p></noscript>\n";

std::string paragraph(const std::string& words) {
    return "<p>" + nmk_text::xml_text(words) + "</p>\n";
}

}  // namespace

std::optional<std::string> model_page(const ModelFigures& figures, const WeldedMesh& mesh,
                                      ViewSide side, nmkProgressBreak& progress) {
    const std::optional<WeldedMesh> reduced = reduced_mesh(mesh, max_page_triangles, progress);
    if (!reduced) return std::nullopt;
    const WeldedMesh& shown = *reduced;
    std::string content = paragraph(model_summary(figures) + "; " + fault_summary(figures));
    content += toolbar() + model_canvas(figures, shown, side) + hint;
    const bool has_free = figures.free_edges > 0;
    content += nmk_draw::legend_list(model_legend({true, true, has_free, has_free}));
    if (shown.triangles.size() < mesh.triangles.size()) {
        content += paragraph("The page shows a coarser model of " +
                             std::to_string(shown.triangles.size()) +
                             " triangles; edges are those of that model.");
    }
    nmk_draw::HtmlTable table;
    for (const auto& [name, value] : figure_lines(figures)) table.rows.push_back({name, value});
    content += nmk_draw::html_table(table);
    const std::string name = nmk_files::base_name(figures.name);
    return nmk_draw::html_frame(name + ": a triangle model", name, content);
}

}  // namespace nmk_model
