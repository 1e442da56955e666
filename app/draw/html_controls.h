// html_controls.h: what a page has around its drawings: panels, controls and tables.
//
// Controls are hidden until the script of the page shows them. Words are escaped here; attributes
// and drawings are not.
#pragma once

#include <string>
#include <vector>

#include "draw/legend.h"
#include "draw/svg_document.h"

namespace nmk_draw {

/// A drawing that is panned and zoomed.
struct HtmlPanel {
    std::string name;   // "Before"
    std::string words;  // "travel 1234.5 mm"
    std::string drawing;
};

/// The attributes of a drawing in a panel, with what it shows for those who cannot see it.
std::string panel_attributes(const std::string& label);

/// The panels side by side, or below each other where the page is narrow.
std::string html_panels(const std::vector<HtmlPanel>& panels);

/// A check box that shows and hides the groups of the drawings with `data-tool="key"`.
struct LayerControl {
    std::string key;
    std::string name;  // "T1", for the playback
    LegendEntry entry;
};

/// The bar of controls: for layers where there are any, for the playback of moves, for the zoom.
/// `noun` names one step of the playback.
std::string html_toolbar(const std::vector<LayerControl>& layers, const std::string& noun);

/// A table. On a narrow page its rows become blocks, in which the headings name the cells.
struct HtmlTable {
    std::vector<std::string> headings;
    std::vector<std::string> units;  // below the headings; either may be empty
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> total;  // may be empty
};

std::string html_table(const HtmlTable& table);

}  // namespace nmk_draw
