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

/// The data of a path, in short: 0 to 2 decimals are written.
class SvgPath {
  public:
    explicit SvgPath(int decimals = 2) : m_decimals(decimals) {}

    /// A straight line; continues without lifting the pen where the last one ended.
    void line(SvgPoint from, SvgPoint to);

    /// A line of no length, which a round end makes a dot as wide as the stroke.
    void dot(SvgPoint at);

    bool empty() const { return m_data.empty(); }
    const std::string& data() const { return m_data; }

  private:
    std::string m_data;
    SvgPoint m_pen;
    int m_decimals;
};

class SvgDocument {
  public:
    /// Elements up to the matching close_group share the attributes: `fill="none" ...`.
    void open_group(std::string_view attributes);
    void close_group();

    void circle(SvgPoint centre, double radius, std::string_view attributes = {});
    void line(SvgPoint from, SvgPoint to, std::string_view attributes = {});
    void rectangle(SvgPoint corner, double width, double height, std::string_view attributes);
    void path(const SvgPath& path, std::string_view attributes = {});

    /// A path that lifts the pen before each line: pairs of points, from and to.
    void separate_lines(const std::vector<SvgPoint>& pairs, std::string_view attributes);

    void text(SvgPoint at, std::string_view words, std::string_view attributes = {});

    /// Adds SVG elements as text.
    void raw(std::string_view elements) { m_body += elements; }

    /// The whole drawing, on a white background of this size; open groups are closed.
    std::string str(double width, double height, std::string_view title) const;

    /// The drawing as an element of a page: from `corner` on, without background and title.
    std::string element(SvgPoint corner, double width, double height,
                        std::string_view attributes) const;

  private:
    std::string closed_body() const;

    std::string m_body;
    int m_open_groups = 0;
};

/// `transform="translate(x y)"`
std::string moved_to(SvgPoint at);

}  // namespace nmk_draw
