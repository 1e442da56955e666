// dxf_units: the unit of the coordinates of a DXF file.

#include "formats/dxf/dxf_units.h"

#include <cstddef>
#include <iterator>

namespace nmk_dxf {

namespace {

// By the value of $INSUNITS: none, inch, foot, mile, millimetre, centimetre, metre, kilometre,
// microinch, mil, yard, angstrom, nanometre, micrometre, decimetre, decametre, hectometre,
// gigametre, astronomical unit, light year, parsec, and the survey foot of the United States, which
// is 1200 / 3937 of a metre, with its inch, yard and mile.
constexpr double survey_foot = 1200.0 / 3937.0 * 1000.0;
constexpr double millimetres[] = {0.0,
                                  25.4,
                                  304.8,
                                  1609344.0,
                                  1.0,
                                  10.0,
                                  1000.0,
                                  1e6,
                                  25.4e-6,
                                  25.4e-3,
                                  914.4,
                                  1e-7,
                                  1e-6,
                                  1e-3,
                                  100.0,
                                  1e4,
                                  1e5,
                                  1e12,
                                  149597870700e3,
                                  9460730472580800e3,
                                  30856775814913673e3,
                                  survey_foot,
                                  survey_foot / 12.0,
                                  survey_foot * 3.0,
                                  survey_foot * 5280.0};

}  // namespace

std::optional<double> mm_of_unit(int value) {
    if (value < 0 || static_cast<std::size_t>(value) >= std::size(millimetres)) return std::nullopt;
    return millimetres[value];
}

}  // namespace nmk_dxf
