// legend: the entries of a legend, in a picture or as a list of a page.

#include "draw/legend.h"

#include <algorithm>

#include "draw/fitted_text.h"
#include "text/escaped_text.h"

namespace nmk_draw {

namespace {

constexpr double font_size = 15.0;  // that of legend_text
constexpr double line_height = 27.0;
constexpr double symbol_height = 20.0;
constexpr double between = 9.0;  // a symbol and its words
constexpr double gap = 26.0;     // between entries

}  // namespace

double draw_legend(SvgDocument& svg, PictureColumn column, double top,
                   const LegendEntries& entries) {
    double x = column.left;
    double y = top + 12.0;
    for (const LegendEntry& entry : entries) {
        const double symbol = entry.symbol_width + between;
        const std::string words = fitted_text(entry.words, font_size, column.width() - symbol);
        const double width = symbol + text_width(words, font_size);
        if (x > column.left && x + width > column.right) {
            x = column.left;
            y += line_height;
        }
        entry.draw(svg, {x, y});
        svg.text({x + symbol, y + 5.0}, words, legend_text);
        x += width + gap;
    }
    return y + line_height - 12.0;
}

std::string legend_symbol(const LegendEntry& entry) {
    SvgDocument symbol;
    entry.draw(symbol, {1.0, symbol_height / 2});
    const int width = static_cast<int>(entry.symbol_width) + 2;
    return symbol.element({}, width, symbol_height,
                          "class=\"drawing symbol\" aria-hidden=\"true\" width=\"" +
                              std::to_string(width) + "\" height=\"20\"");
}

std::string legend_list(const LegendEntries& entries) {
    std::string list = "<ul class=\"legend\" aria-label=\"Legend\">\n";
    for (const LegendEntry& entry : entries) {
        list += "<li>" + legend_symbol(entry) + "<span>" + nmk_text::xml_text(entry.words) +
                "</span></li>\n";
    }
    return list + "</ul>\n";
}

}  // namespace nmk_draw
