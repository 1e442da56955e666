// curve_view.h: how curves in space are projected onto a picture.
//
// Curves are seen along an axis, the one along which they extend least: from above where they are
// flat in Z. Lines without an end are drawn as far as the frame.
#pragma once

#include <geometry/giBox3.h>
#include <ngk/ngkCurve.h>

#include <string_view>
#include <vector>

#include "draw/plot_frame.h"

namespace nmk_curve {

/// The axes of space that lead to the right and upwards: 0 is X.
struct ViewAxes {
    int right = 0;
    int up = 1;

    /// "X to the right, Y upwards"
    std::string_view words() const;
};

/// The projection, and the frame into which it maps.
struct CurveView {
    ViewAxes axes;
    nmk_draw::PlotFrame frame;

    nmk_draw::SvgPoint at(const giPoint3& point) const;

    /// Pixels in a mm.
    double scale() const { return frame.width / frame.x.span(); }
};

/// The smallest box around curves and points; of a line without an end around a part of it.
giBox3 shown_box(const std::vector<ngkCurvePtr3>& curves, const std::vector<giPoint3>& points);

/// A view of the box with some room around it, with the same scale in both directions: of this
/// width, and as high as the box needs.
CurveView view_of(const giBox3& box, nmk_draw::SvgPoint corner, double width);

/// The points of the curve's polygon, as fine as the view shows. Those of a line without an end are
/// far beyond the frame.
std::vector<nmk_draw::SvgPoint> drawn_points(const ngkCurve3& curve, const CurveView& view);

}  // namespace nmk_curve
