// scaled_point.h: a point of a DXF file in millimetres.
#pragma once

#include <geometry/giPoint3.h>

namespace nmk_dxf {

inline giPoint3 scaled(const giPoint3& point, double mm) {
    return {point.x * mm, point.y * mm, point.z * mm};
}

}  // namespace nmk_dxf
