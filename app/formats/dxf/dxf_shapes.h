// dxf_shapes.h: the curve of a line, circle, arc or spline of a DXF file.
#pragma once

#include <ngk/ngkCurve.h>

#include <variant>

#include "formats/dxf/dxf_entity.h"

namespace nmk_dxf {

/// The curve of an entity, or why it has none. What is wrong is thrown as an Error.
using Shape = std::variant<ngkCurvePtr3, NoCurve>;

// Each takes an entity of its kind; lengths are multiplied by `mm`, the millimetres in a unit.
Shape line_of(const DxfEntity& entity, double mm);
Shape circle_of(const DxfEntity& entity, double mm);

/// Counter-clockwise about the normal, from the angle of group 50 to that of group 51 in degrees.
Shape arc_of(const DxfEntity& entity, double mm);

/// The NURBS curve of the control points, knots and weights. A closed or periodic spline has all
/// its control points in the file. One with fit points alone has no curve here.
Shape spline_of(const DxfEntity& entity, double mm);

}  // namespace nmk_dxf
