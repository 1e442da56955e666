// xform_kind.h: what kind of map a matrix and a translation are.
#pragma once

#include <geometry/giXform3.h>

namespace nmk_geometry {

giXform3Kind kind_of(const giXform3::Matrix& linear, const giVector3& translation);

}  // namespace nmk_geometry
