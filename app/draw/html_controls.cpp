// html_controls: what a page has around its drawings: panels, controls and tables.

#include "draw/html_controls.h"

#include "text/escaped_text.h"

namespace nmk_draw {

namespace {

using nmk_text::xml_text;

constexpr const char* zoom_controls =
    "<div class=\"group\" role=\"group\" aria-label=\"Zoom\">\n"
    "<button type=\"button\" data-zoom=\"in\" aria-label=\"Zoom in\">+</button>\n"
    "<button type=\"button\" data-zoom=\"out\" aria-label=\"Zoom out\">\xE2\x88\x92</button>\n"
    "<button type=\"button\" data-zoom=\"whole\">Whole drawing</button>\n"
    "</div>\n";

constexpr const char* hint =
    "<p class=\"hint\">Drag to pan; zoom with a double click, two fingers or Ctrl and the wheel. "
    "With the keyboard: arrows, +, - and 0.</p>\n";

std::string playback_controls(const std::string& noun) {
    return "<div class=\"group playback\" role=\"group\" aria-label=\"Playback\" data-noun=\"" +
           xml_text(noun) +
           "\">\n<button type=\"button\">Play</button>\n"
           "<input type=\"range\" min=\"0\" max=\"1\" value=\"1\" aria-label=\"Number of the "
           "last " +
           xml_text(noun) +
           " shown\"/>\n<select aria-label=\"Speed\">"
           "<option value=\"0.25\">slow</option>"
           "<option value=\"1\" selected=\"\">normal</option>"
           "<option value=\"4\">fast</option></select>\n"
           "<output aria-live=\"polite\"></output>\n</div>\n";
}

std::string layer_controls(const std::vector<LayerControl>& layers) {
    std::string text = "<fieldset>\n<legend>Tools</legend>\n<div class=\"choices\">\n";
    for (const LayerControl& layer : layers) {
        text += "<label><input type=\"checkbox\" checked=\"\" data-tool=\"" + xml_text(layer.key) +
                "\" data-name=\"" + xml_text(layer.name) + "\"/>" + legend_symbol(layer.entry) +
                "<span>" + xml_text(layer.entry.words) + "</span></label>\n";
    }
    if (layers.size() > 1) {
        text +=
            "<button type=\"button\" data-layers=\"all\">All</button>\n"
            "<button type=\"button\" data-layers=\"none\">None</button>\n";
    }
    return text + "</div>\n</fieldset>\n";
}

std::string heading_row(const std::vector<std::string>& cells, const std::string& attributes) {
    std::string row = "<tr>";
    for (const std::string& cell : cells) {
        row += "<th" + attributes + ">" + xml_text(cell) + "</th>";
    }
    return row + "</tr>\n";
}

std::string unit_after(const HtmlTable& table, std::size_t column) {
    const std::string unit = column < table.units.size() ? table.units[column] : "";
    return unit.empty() ? "" : ", " + unit;
}

std::string table_row(const HtmlTable& table, const std::vector<std::string>& cells) {
    std::string row = "<tr>";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const bool has_label = i > 0 && i < table.headings.size();
        const std::string label =
            has_label ? " data-label=\"" + xml_text(table.headings[i] + unit_after(table, i)) + "\""
                      : "";
        row += "<td" + label + ">" + xml_text(cells[i]) + "</td>";
    }
    return row + "</tr>\n";
}

}  // namespace

std::string panel_attributes(const std::string& label) {
    return "class=\"drawing panel\" role=\"img\" aria-label=\"" + xml_text(label) + "\"";
}

std::string html_panels(const std::vector<HtmlPanel>& panels) {
    std::string text = "<div class=\"panels\">\n";
    for (const HtmlPanel& panel : panels) {
        text += "<figure>\n<figcaption><strong>" + xml_text(panel.name) + "</strong><span>" +
                xml_text(panel.words) +
                "</span></figcaption>\n<div class=\"view\" role=\"group\" tabindex=\"0\" "
                "aria-label=\"" +
                xml_text(panel.name) + "; arrows pan, plus and minus zoom\">" + panel.drawing +
                "</div>\n</figure>\n";
    }
    return text + "</div>\n" + hint;
}

std::string html_toolbar(const std::vector<LayerControl>& layers, const std::string& noun) {
    return "<div class=\"toolbar\" hidden=\"\">\n" +
           (layers.empty() ? "" : layer_controls(layers)) + playback_controls(noun) +
           zoom_controls + "</div>\n";
}

std::string html_table(const HtmlTable& table) {
    const bool has_headings = !table.headings.empty();
    std::string text = has_headings ? "<table class=\"wide\">\n<thead>\n" +
                                          heading_row(table.headings, " scope=\"col\"") +
                                          heading_row(table.units, "") + "</thead>\n<tbody>\n"
                                    : "<table>\n<tbody>\n";
    for (const std::vector<std::string>& row : table.rows) {
        text += table_row(table, row);
    }
    text += "</tbody>\n";
    if (!table.total.empty()) {
        text += "<tfoot>\n" + table_row(table, table.total) + "</tfoot>\n";
    }
    return text + "</table>\n";
}

}  // namespace nmk_draw
