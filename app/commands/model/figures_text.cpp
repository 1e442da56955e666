// figures_text: the figures of models as text.

#include "commands/model/figures_text.h"

#include <algorithm>
#include <utility>

#include "files/base_name.h"
#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/text_columns.h"
#include "text/wrapped_text.h"

namespace nmk_model {

namespace {

constexpr int decimals_of_mm = 4;
constexpr int decimals_of_inches = 5;

using Line = std::pair<std::string, std::string>;

/// A unit of lengths, as the list shows it.
struct ShownUnit {
    const char* name;
    double in_mm;
    int decimals;

    std::string text(double length) const {
        return nmk_text::short_number(length / in_mm, decimals);
    }
};

constexpr ShownUnit shown_units[] = {{"mm", 1.0, decimals_of_mm},
                                     {"inches", mm_per_inch, decimals_of_inches}};

void add_box_lines(std::vector<Line>& lines, const giBox3& box, const ShownUnit& unit) {
    const auto point = [&](const giPoint3& at) {
        return unit.text(at.x) + " " + unit.text(at.y) + " " + unit.text(at.z);
    };
    const giVector3 size = box.max() - box.min();
    lines.emplace_back(std::string("Size, ") + unit.name,
                       unit.text(size.x) + " x " + unit.text(size.y) + " x " + unit.text(size.z));
    lines.emplace_back(std::string("Box, ") + unit.name,
                       point(box.min()) + " to " + point(box.max()));
}

/// The name in a table that fits a terminal.
std::string table_name(const std::string& name) {
    constexpr std::size_t max_name = 28;
    const std::string line = nmk_text::line_text(name);
    return line.size() <= max_name
               ? line
               : nmk_text::shortened(nmk_text::line_text(nmk_files::base_name(name)), max_name);
}

std::string volume_text(const ModelFigures& figures) {
    if (!figures.is_closed()) return "not closed";
    const std::string number = nmk_text::short_number(*figures.volume, decimals_of_mm);
    return *figures.volume < 0.0 ? number + " (inside out)" : number;
}

void add_size_lines(std::vector<Line>& lines, const ModelFigures& figures) {
    if (figures.box.is_empty()) {
        lines.emplace_back("Box", "none");
        return;
    }
    for (const ShownUnit& unit : shown_units) add_box_lines(lines, figures.box, unit);
    lines.emplace_back("Area, mm2", nmk_text::short_number(figures.area, decimals_of_mm));
    lines.emplace_back("Volume, mm3", volume_text(figures));
}

}  // namespace

std::string units_name(ModelUnits units) { return units == ModelUnits::inches ? "inch" : "mm"; }

std::vector<Line> figure_lines(const ModelFigures& figures) {
    std::vector<Line> lines = {{"Blocks", std::to_string(figures.blocks)},
                               {"Triangles", std::to_string(figures.triangles)}};
    if (figures.invalid_triangles > 0) {
        lines.emplace_back("Left out", std::to_string(figures.invalid_triangles) +
                                           " with a corner that is not a number, or beyond 1e9");
    }
    lines.emplace_back("Nodes", std::to_string(figures.stored_nodes) + ", welded " +
                                    std::to_string(figures.welded_nodes));
    add_size_lines(lines, figures);
    lines.emplace_back("Free edges", std::to_string(figures.free_edges));
    lines.emplace_back("Edges of more than two triangles", std::to_string(figures.crowded_edges));
    lines.emplace_back("Edges wound against each other", std::to_string(figures.opposed_edges));
    lines.emplace_back("Degenerate triangles", std::to_string(figures.degenerate_triangles));
    lines.emplace_back("Shells", std::to_string(figures.shells));
    return lines;
}

std::string figures_list(const ModelFigures& figures) {
    constexpr std::size_t name_width = 34;
    std::string text = nmk_text::line_text(figures.name) + ": " +
                       std::string(format_name(figures.format)) + ", units " +
                       units_name(figures.file_units) + "\n\n";
    for (const auto& [name, value] : figure_lines(figures)) {
        text += name + std::string(name_width - name.size(), ' ') + value + "\n";
    }
    return text;
}

std::string figures_table(const std::vector<ModelFigures>& all) {
    std::vector<std::vector<std::string>> rows = {
        {"file", "triangles", "nodes", "free", "more", "zero", "shells", "closed"},
        {"", "", "", "edges", "than 2", "area", "", ""}};
    for (const ModelFigures& figures : all) {
        rows.push_back({table_name(figures.name), std::to_string(figures.triangles),
                        std::to_string(figures.welded_nodes), std::to_string(figures.free_edges),
                        std::to_string(figures.crowded_edges),
                        std::to_string(figures.degenerate_triangles),
                        std::to_string(figures.shells), figures.is_closed() ? "yes" : "no"});
    }
    std::string text;
    for (const std::string& line : nmk_text::column_lines(rows)) text += line + "\n";
    return text;
}

}  // namespace nmk_model
