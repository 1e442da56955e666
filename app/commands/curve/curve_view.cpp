// curve_view: how curves in space are projected onto a picture.

#include "commands/curve/curve_view.h"

#include <ngk/ngkLine.h>
#include <ngk/ngkPolyline.h>

#include <algorithm>
#include <array>

namespace nmk_curve {

namespace {

using nmk_draw::PlotRange;
using nmk_draw::SvgPoint;

constexpr double room = 0.12;          // around the box, as a part of its longer side
constexpr double shown_of_line = 10;   // mm of a line without an end, where nothing else is shown
constexpr double least_extent = 1e-6;  // mm; less is drawn as a point
constexpr double shown_of_point = 10;  // mm around it
constexpr double lowest_part = 0.35;   // of the width that the frame is high, at least
constexpr double highest_part = 0.8;   // and at most
constexpr double chord_in_pixels = 0.1;

double coordinate(const giPoint3& point, int axis) {
    return axis == 0 ? point.x : axis == 1 ? point.y : point.z;
}

/// The axes across the one along which the box is shortest; Z where several are.
ViewAxes axes_of(const giBox3& box) {
    const giVector3 size = box.max() - box.min();
    if (size.z <= size.x && size.z <= size.y) return {0, 1};
    return size.y <= size.x ? ViewAxes{0, 2} : ViewAxes{1, 2};
}

PlotRange around(double low, double high, double span) {
    const double middle = low + (high - low) / 2;
    return {middle - span / 2, middle + span / 2};
}

bool is_endless(const ngkCurve3& curve) {
    const auto* const line = dynamic_cast<const ngkLine3*>(&curve);
    return line != nullptr && line->kind() != ngkLineKind::bounded;
}

/// Far enough on either side of the frame to leave it.
std::vector<SvgPoint> endless_points(const ngkLine3& line, const CurveView& view) {
    const PlotRange& x = view.frame.x;
    const PlotRange& y = view.frame.y;
    const double from_frame =
        std::max({std::abs(coordinate(line.start(), view.axes.right) - x.low),
                  std::abs(coordinate(line.start(), view.axes.right) - x.high),
                  std::abs(coordinate(line.start(), view.axes.up) - y.low),
                  std::abs(coordinate(line.start(), view.axes.up) - y.high)});
    const double reach = from_frame + x.span() + y.span();
    const giPoint3 before =
        line.kind() == ngkLineKind::half ? line.start() : line.start() - line.direction() * reach;
    return {view.at(before), view.at(line.start() + line.direction() * reach)};
}

void add_curve(giBox3& box, const ngkCurve3& curve) {
    const giBox3 its_box = curve.bounding_box();
    if (!its_box.is_empty()) {
        box.add(its_box.min());
        box.add(its_box.max());
    } else if (const auto* const line = dynamic_cast<const ngkLine3*>(&curve)) {
        box.add(line->start());
        box.add(line->start() + line->direction() * shown_of_line);
    }
}

}  // namespace

std::string_view ViewAxes::words() const {
    if (up == 1) return "X to the right, Y upwards";
    return right == 0 ? "X to the right, Z upwards" : "Y to the right, Z upwards";
}

nmk_draw::SvgPoint CurveView::at(const giPoint3& point) const {
    return frame.at(coordinate(point, axes.right), coordinate(point, axes.up));
}

giBox3 shown_box(const std::vector<ngkCurvePtr3>& curves, const std::vector<giPoint3>& points) {
    giBox3 box;
    for (const ngkCurvePtr3& curve : curves) add_curve(box, *curve);
    for (const giPoint3& point : points) box.add(point);
    return box;
}

CurveView view_of(const giBox3& box, nmk_draw::SvgPoint corner, double width) {
    CurveView view;
    view.axes = axes_of(box);
    const auto low = [&](int axis) { return coordinate(box.min(), axis); };
    const auto high = [&](int axis) { return coordinate(box.max(), axis); };
    const double across = high(view.axes.right) - low(view.axes.right);
    const double upwards = high(view.axes.up) - low(view.axes.up);
    const double longest = std::max(across, upwards);
    const double longer = longest > least_extent ? longest : shown_of_point;
    const double wanted_across = across + 2 * room * longer;
    const double wanted_upwards = upwards + 2 * room * longer;
    const double part = std::clamp(wanted_upwards / wanted_across, lowest_part, highest_part);
    const double span = std::max(wanted_across, wanted_upwards / part);
    view.frame = {around(low(view.axes.right), high(view.axes.right), span),
                  around(low(view.axes.up), high(view.axes.up), span * part), corner, width,
                  width * part};
    return view;
}

std::vector<nmk_draw::SvgPoint> drawn_points(const ngkCurve3& curve, const CurveView& view) {
    if (is_endless(curve)) return endless_points(dynamic_cast<const ngkLine3&>(curve), view);
    std::vector<SvgPoint> drawn;
    const ngkPolyline3 polygon =
        curve.curve_polygon(ngkPolygonizeTRP3(chord_in_pixels / view.scale()));
    for (const giPoint3& point : polygon.points()) drawn.push_back(view.at(point));
    return drawn;
}

}  // namespace nmk_curve
