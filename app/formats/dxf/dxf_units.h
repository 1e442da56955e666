// dxf_units.h: the unit of the coordinates of a DXF file.
#pragma once

#include <optional>

namespace nmk_dxf {

/// The millimetres in one unit of the header's variable $INSUNITS: 1 are inches, 4 millimetres.
/// 0 for the value 0, a file that does not state its unit; empty for an unknown value.
std::optional<double> mm_of_unit(int value);

}  // namespace nmk_dxf
