// legend_line: the entries of a legend, from left to right and then on the next line.

#include "draw/legend_line.h"

#include "draw/label_places.h"

namespace nmk_draw {

namespace {

constexpr double font_size = 15.0;  // that of legend_text
constexpr double line_height = 27.0;

}  // namespace

LegendLine::LegendLine(PictureColumn within, double top)
    : m_column(within), m_x(within.left), m_y(top + 12.0) {}

SvgPoint LegendLine::next(double width) {
    if (m_x > m_column.left && m_x + width > m_column.right) {
        m_x = m_column.left;
        m_y += line_height;
    }
    const SvgPoint at{m_x, m_y};
    m_x += width + 30.0;
    return at;
}

double LegendLine::bottom() const { return m_y + line_height - 12.0; }

void draw_entry(SvgDocument& svg, LegendLine& line, const std::string& words, double symbol_width,
                const std::function<void(SvgPoint)>& draw_symbol) {
    const SvgPoint at = line.next(symbol_width + 9.0 + text_width(words, font_size) * 0.9);
    draw_symbol(at);
    svg.text({at.x + symbol_width + 9.0, at.y + 5.0}, words, legend_text);
}

}  // namespace nmk_draw
