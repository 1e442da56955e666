// dxf_shapes: the curve of a line, circle or arc of a DXF file.

#include "formats/dxf/dxf_shapes.h"

#include <ngk/ngkArc.h>
#include <ngk/ngkCircle.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <numbers>

#include "formats/dxf/scaled_point.h"

namespace nmk_dxf {

namespace {

constexpr double radians = std::numbers::pi / 180.0;

ngkCircle3 full_circle(const DxfEntity& entity, double mm) {
    const double radius = entity.needed(40) * mm;
    if (radius < 0.0) refuse(entity.line, "the radius is negative; expected a number from 0 up");
    giWorkplane3 plane = entity.plane();
    plane.become(scaled(plane.to_world(entity.point(10)), mm), plane.y_axis(), plane.z_axis());
    return {plane, radius};
}

}  // namespace

Shape line_of(const DxfEntity& entity, double mm) {
    const ngkCurvePtr3 line =
        nmkNgkMakeUtils::make_line(scaled(entity.point(10), mm), scaled(entity.point(11), mm));
    return line ? Shape(line) : Shape(NoCurve{"without length"});
}

Shape circle_of(const DxfEntity& entity, double mm) {
    const ngkCircle3 circle = full_circle(entity, mm);
    if (circle.radius() == 0.0) return NoCurve{"without length"};
    return ngkCurvePtr3(new ngkCircle3(circle));
}

Shape arc_of(const DxfEntity& entity, double mm) {
    const ngkCircle3 circle = full_circle(entity, mm);
    if (circle.radius() == 0.0) return NoCurve{"without length"};
    return ngkCurvePtr3(
        new ngkArc3(circle, entity.needed(50) * radians, entity.needed(51) * radians));
}

}  // namespace nmk_dxf
