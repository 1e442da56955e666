// dxf_reader.h: reads the curves of an ASCII DXF file.
//
// LINE, CIRCLE, ARC, LWPOLYLINE, POLYLINE and SPLINE entities of the section ENTITIES become curves
// in space, in millimetres by the header's $INSUNITS. Entities of other kinds, of the paper and
// without length are counted. Blocks are not inserted.
//
// Every line counts: a file that is cut, even behind a whole group, is refused for its missing EOF.
#pragma once

#include <ngk/ngkCurve.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "text/result.h"

namespace nmk_dxf {

struct DxfCurve {
    ngkCurvePtr3 curve;
    std::string entity;    // "LWPOLYLINE"
    std::size_t line = 0;  // at which the entity begins
};

struct DxfDrawing {
    std::vector<DxfCurve> curves;  // in the order of the file
    bool states_unit = false;
    std::map<std::string, std::size_t> left_out;  // "TEXT", "LINE without length": how many
};

/// A file with more curves is refused, since every curve costs memory.
constexpr std::size_t max_curves = 250'000;

/// The drawing, or an Error with its line.
///
///   mm_of_unstated  millimetres in a unit of a file that does not state its unit
nmk_text::Result<DxfDrawing> read_dxf(const std::string& file_name, std::string_view text,
                                      double mm_of_unstated);

/// Whether the bytes begin like a DXF file in its binary form, which is not read.
bool is_binary_dxf(std::string_view bytes);

/// Whether the text begins like a DXF file: with a line that has a whole number alone.
bool looks_like_dxf(std::string_view text);

}  // namespace nmk_dxf
