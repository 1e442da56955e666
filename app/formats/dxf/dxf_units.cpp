// dxf_units: the unit of the coordinates of a DXF file.

#include "formats/dxf/dxf_units.h"

#include <cstddef>
#include <iterator>

namespace nmk_dxf {

namespace {

// By the value of $INSUNITS: none, inch, foot, mile, millimetre, centimetre, metre, kilometre,
// microinch, mil, yard, angstrom, nanometre, micrometre, decimetre, decametre, hectometre.
constexpr double millimetres[] = {0.0,    25.4, 304.8,   1609344.0, 1.0,   10.0,
                                  1000.0, 1e6,  25.4e-6, 25.4e-3,   914.4, 1e-7,
                                  1e-6,   1e-3, 100.0,   1e4,       1e5};

}  // namespace

std::optional<double> mm_of_unit(int value) {
    if (value < 0 || static_cast<std::size_t>(value) >= std::size(millimetres)) return std::nullopt;
    return millimetres[value];
}

}  // namespace nmk_dxf
