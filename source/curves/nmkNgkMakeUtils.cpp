#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCircle.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <array>
#include <cmath>

#include "circle_plane.h"
#include "curve_handle.h"

using nmk_curves::coincidence_in_space;
using nmk_curves::handle_of;

namespace {

// Corners of a rectangle in the world, and its sides as unit vectors in the direction of its size.
struct Rectangle {
    std::array<giPoint3, 4> corners;
    giVector3 along_width;
    giVector3 along_height;

    Rectangle(const giWorkplane3& plane, const giPoint2& size)
        : corners{plane.origin(), plane.to_world(giPoint3(size.x, 0.0, 0.0)),
                  plane.to_world(giPoint3(size.x, size.y, 0.0)),
                  plane.to_world(giPoint3(0.0, size.y, 0.0))},
          along_width(plane.x_axis().vector() * std::copysign(1.0, size.x)),
          along_height(plane.y_axis().vector() * std::copysign(1.0, size.y)) {}
};

bool has_area(const giWorkplane3& plane, const giPoint2& size) {
    const double tolerance = coincidence_in_space();
    return plane.is_set() && size.is_set() && std::abs(size.x) > tolerance &&
           std::abs(size.y) > tolerance;
}

giUnitVec3 unit(const giVector3& direction) {
    return giUnitVec3(giUnit::already, direction.x, direction.y, direction.z);
}

// The outline of a rectangle with rounded corners, piece by piece.
class FilletedOutline {
  public:
    FilletedOutline() : m_outline(new ngkCompCurve3(m_tolerance)) {}

    // A corner from `start` along the direction `in` to `end` along `out`.
    void add_arc(const giPoint3& start, const giPoint3& end, const giVector3& in,
                 const giVector3& out) {
        add(nmkNgkMakeUtils::make_arc(start, end, unit(in), unit(out), m_tolerance));
    }

    void add_line(const giPoint3& start, const giPoint3& end) {
        add(nmkNgkMakeUtils::make_line(start, end));
    }

    /// Empty where a piece was refused.
    ngkCurvePtr3 curve() const {
        return m_is_joined && m_outline->is_valid() ? ngkCurvePtr3(m_outline) : ngkCurvePtr3();
    }

  private:
    // A piece whose ends coincide is an empty handle, and left out.
    void add(const ngkCurvePtr3& piece) {
        if (piece) m_is_joined = m_outline->add_segment_end(piece) != 0 && m_is_joined;
    }

    double m_tolerance = coincidence_in_space();
    coPrf<ngkCompCurve3> m_outline;
    bool m_is_joined = true;
};

bool is_any_unset(const giPoint3coDynArr& points, int count) {
    for (int i = 0; i < count; ++i) {
        if (!points[i].is_set()) return true;
    }
    return false;
}

}  // namespace

ngkCurvePtr3 nmkNgkMakeUtils::make_circle(const giCircle3& circle) {
    if (circle.invalid()) return ngkCurvePtr3();
    return make_circle(nmk_curves::circle_plane(circle), circle.radius());
}

ngkCurvePtr3 nmkNgkMakeUtils::make_circle(const giWorkplane3& plane, double radius) {
    return handle_of(new ngkCircle3(plane, radius));
}

ngkCurvePtr3 nmkNgkMakeUtils::make_line(const giPoint3& start, const giPoint3& end) {
    if (start.coincident(end, coincidence_in_space())) return ngkCurvePtr3();
    return handle_of(new ngkLine3(start, end));
}

ngkCurvePtr2 nmkNgkMakeUtils::make_line(const giPoint2& start, const giPoint2& end) {
    const double tolerance = ngk_resource_table_inquire().value(ngk_TOLCOINCPOINT2D);
    if (start.coincident(end, tolerance)) return ngkCurvePtr2();
    return handle_of(new ngkLine2(start, end));
}

// Deliberate: half and infinite lines are not checked, so that a caller sees an invalid curve.
ngkCurvePtr3 nmkNgkMakeUtils::make_half_line(const giPoint3& point, const giUnitVec3& direction) {
    return ngkCurvePtr3(new ngkLine3(point, direction, ngkLineKind::half));
}

ngkCurvePtr3 nmkNgkMakeUtils::make_inf_line(const giPoint3& point, const giUnitVec3& direction) {
    return ngkCurvePtr3(new ngkLine3(point, direction, ngkLineKind::infinite));
}

ngkCurvePtr3 nmkNgkMakeUtils::make_point_curve(const giPoint3& point) {
    return handle_of(new ngkBezCurve3(std::array{point, point}));
}

ngkCurvePtr3 nmkNgkMakeUtils::make_polyline(const giPoint3coDList& points) {
    giPoint3coDynArr array;
    for (const giPoint3& point : points) array.add(point);
    return make_polyline(array);
}

ngkCurvePtr3 nmkNgkMakeUtils::make_polyline(const giPoint3coDynArr& points) {
    return make_polyline(points, points.size());
}

ngkCurvePtr3 nmkNgkMakeUtils::make_polyline(const giPoint3coDynArr& points, int count) {
    if (count < 2 || count > points.size()) return ngkCurvePtr3();
    if (count == 2) return make_line(points[0], points[1]);
    if (is_any_unset(points, count)) return ngkCurvePtr3();
    const double tolerance = coincidence_in_space();
    auto* const polyline = new ngkPolyline3;
    giPoint3 last = points[0];
    polyline->add_point(last);
    // Deliberate: each point is compared with the last one added, not with its neighbour, so the
    // last of the points may be dropped too.
    for (int i = 1; i < count; ++i) {
        if (points[i].coincident(last, tolerance)) continue;
        last = points[i];
        polyline->add_point(last);
    }
    return handle_of(polyline);
}

ngkCurvePtr3 nmkNgkMakeUtils::make_rectangle(const giWorkplane3& plane, const giPoint2& size) {
    if (!has_area(plane, size)) return ngkCurvePtr3();
    const Rectangle rectangle(plane, size);
    auto* const outline = new ngkPolyline3(rectangle.corners);
    outline->add_point(rectangle.corners[0]);
    return handle_of(outline);
}

ngkCurvePtr3 nmkNgkMakeUtils::make_filleted_rectangle(const giWorkplane3& plane,
                                                      const giPoint2& size, double radius) {
    const bool has_room =
        radius >= 0.0 && std::abs(size.x) >= 2.0 * radius && std::abs(size.y) >= 2.0 * radius;
    if (!has_room || !has_area(plane, size)) return ngkCurvePtr3();
    const Rectangle rectangle(plane, size);
    const auto& [o, a, b, c] = rectangle.corners;
    const giVector3& x = rectangle.along_width;
    const giVector3& y = rectangle.along_height;
    const giVector3 ux = x * radius;
    const giVector3 uy = y * radius;
    FilletedOutline outline;
    outline.add_arc(o + uy, o + ux, -y, x);
    outline.add_line(o + ux, a - ux);
    outline.add_arc(a - ux, a + uy, x, y);
    outline.add_line(a + uy, b - uy);
    outline.add_arc(b - uy, b - ux, y, -x);
    outline.add_line(b - ux, c + ux);
    outline.add_arc(c + ux, c - uy, -x, -y);
    outline.add_line(c - uy, o + uy);
    return outline.curve();
}
