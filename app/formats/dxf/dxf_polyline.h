// dxf_polyline.h: the curve of a LWPOLYLINE, or of a POLYLINE with its VERTEX entities.
//
// A bulge is the tangent of a quarter of the angle of the arc that leads from a vertex to the next
// one; above 0 it turns to the left. Without bulges the curve is a line or a polyline, otherwise a
// composite curve of lines and arcs. Segments without length are left out.
#pragma once

#include <vector>

#include "formats/dxf/dxf_shapes.h"

namespace nmk_dxf {

Shape light_polyline_of(const DxfEntity& entity, double mm);

/// `vertices` are the VERTEX entities that follow the POLYLINE. A mesh has no curve.
Shape polyline_of(const DxfEntity& entity, const std::vector<DxfEntity>& vertices, double mm);

}  // namespace nmk_dxf
