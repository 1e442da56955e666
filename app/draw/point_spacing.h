// point_spacing.h: how far the points of a drawing are apart.
#pragma once

#include <vector>

#include "draw/svg_document.h"

namespace nmk_draw {

/// About the median of the distances from each point to the nearest one that differs from it, at
/// most half as much again; infinite if no two points differ. The time is that of sorting them.
double point_spacing(const std::vector<SvgPoint>& points);

}  // namespace nmk_draw
