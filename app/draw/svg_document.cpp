// svg_document: writes an SVG drawing, element by element.

#include "draw/svg_document.h"

#include <cstddef>

#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_draw {

namespace {

std::string pixels(double value) { return nmk_text::short_number(value, 2); }

std::string attribute(std::string_view name, double value) {
    return " " + std::string(name) + "=\"" + pixels(value) + "\"";
}

std::string with_blank(std::string_view attributes) {
    return attributes.empty() ? std::string() : " " + std::string(attributes);
}

constexpr const char* font =
    "font-family=\"'Segoe UI', 'Helvetica Neue', Arial, 'DejaVu Sans', sans-serif\"";

std::string view_box(SvgPoint corner, double width, double height) {
    return "viewBox=\"" + pixels(corner.x) + " " + pixels(corner.y) + " " + pixels(width) + " " +
           pixels(height) + "\"";
}

}  // namespace

void SvgPath::line(SvgPoint from, SvgPoint to) {
    if (m_data.empty() || from.x != m_pen.x || from.y != m_pen.y) {
        m_data += "M" + nmk_text::short_number(from.x, m_decimals) + " " +
                  nmk_text::short_number(from.y, m_decimals);
    }
    m_data += "L" + nmk_text::short_number(to.x, m_decimals) + " " +
              nmk_text::short_number(to.y, m_decimals);
    m_pen = to;
}

void SvgPath::dot(SvgPoint at) {
    m_data += "M" + nmk_text::short_number(at.x, m_decimals) + " " +
              nmk_text::short_number(at.y, m_decimals) + "h0";
    m_pen = at;
}

void SvgDocument::open_group(std::string_view attributes) {
    m_body += "<g" + with_blank(attributes) + ">\n";
    ++m_open_groups;
}

void SvgDocument::close_group() {
    if (m_open_groups > 0) {
        m_body += "</g>\n";
        --m_open_groups;
    }
}

void SvgDocument::circle(SvgPoint centre, double radius, std::string_view attributes) {
    m_body += "<circle" + attribute("cx", centre.x) + attribute("cy", centre.y) +
              attribute("r", radius) + with_blank(attributes) + "/>\n";
}

void SvgDocument::line(SvgPoint from, SvgPoint to, std::string_view attributes) {
    m_body += "<line" + attribute("x1", from.x) + attribute("y1", from.y) + attribute("x2", to.x) +
              attribute("y2", to.y) + with_blank(attributes) + "/>\n";
}

void SvgDocument::rectangle(SvgPoint corner, double width, double height,
                            std::string_view attributes) {
    m_body += "<rect" + attribute("x", corner.x) + attribute("y", corner.y) +
              attribute("width", width) + attribute("height", height) + with_blank(attributes) +
              "/>\n";
}

void SvgDocument::path(const SvgPath& path, std::string_view attributes) {
    m_body += "<path d=\"" + path.data() + "\"" + with_blank(attributes) + "/>\n";
}

void SvgDocument::separate_lines(const std::vector<SvgPoint>& pairs, std::string_view attributes) {
    SvgPath lines;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        lines.line(pairs[i], pairs[i + 1]);
    }
    path(lines, attributes);
}

void SvgDocument::text(SvgPoint at, std::string_view words, std::string_view attributes) {
    m_body += "<text" + attribute("x", at.x) + attribute("y", at.y) + with_blank(attributes) + ">" +
              nmk_text::xml_text(words) + "</text>\n";
}

std::string SvgDocument::str(double width, double height, std::string_view title) const {
    const std::string w = pixels(width);
    const std::string h = pixels(height);
    std::string whole = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" +
                        h + "\" " + view_box({}, width, height) + " " + font + ">\n";
    whole += "<title>" + nmk_text::xml_text(title) + "</title>\n";
    whole += "<rect x=\"0\" y=\"0\" width=\"" + w + "\" height=\"" + h + "\" fill=\"#ffffff\"/>\n";
    return whole + closed_body() + "</svg>\n";
}

std::string SvgDocument::element(SvgPoint corner, double width, double height,
                                 std::string_view attributes) const {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" " + view_box(corner, width, height) + " " +
           font + with_blank(attributes) + ">\n" + closed_body() + "</svg>\n";
}

std::string SvgDocument::closed_body() const {
    std::string body = m_body;
    for (int i = 0; i < m_open_groups; ++i) {
        body += "</g>\n";
    }
    return body;
}

std::string moved_to(SvgPoint at) {
    return "transform=\"translate(" + pixels(at.x) + " " + pixels(at.y) + ")\"";
}

}  // namespace nmk_draw
