// svg_document.h: writes an SVG drawing, element by element.
//
// Lengths are pixels of the drawing, x to the right and y downwards as in SVG. Text is escaped
// here; attribute strings are not.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nmk_draw {

/// A point in the drawing.
struct SvgPoint {
    double x = 0.0;
    double y = 0.0;
};

class SvgDocument {
  public:
    /// Elements up to the matching close_group share the attributes: `fill="none" ...`.
    void open_group(std::string_view attributes);
    void close_group();

    void circle(SvgPoint centre, double radius, std::string_view attributes = {});
    void line(SvgPoint from, SvgPoint to, std::string_view attributes = {});
    void rectangle(SvgPoint corner, double width, double height, std::string_view attributes);

    /// A path that lifts the pen before each line: pairs of points, from and to.
    void separate_lines(const std::vector<SvgPoint>& pairs, std::string_view attributes);

    void text(SvgPoint at, std::string_view words, std::string_view attributes = {});

    /// Adds SVG elements as text.
    void raw(std::string_view elements) { m_body += elements; }

    /// The whole drawing, on a white background of this size; open groups are closed.
    std::string str(double width, double height, std::string_view title) const;

  private:
    std::string m_body;
    int m_open_groups = 0;
};

}  // namespace nmk_draw
