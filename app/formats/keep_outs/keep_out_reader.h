// keep_out_reader.h: reads a table of keep-outs, such as the clamps that hold a part.
//
// A row is one of
//     circle,X,Y,RADIUS
//     rectangle,X0,Y0,X1,Y1     two opposite corners
//     polygon                   and its corners in rows corner,X,Y below it
//     clearance,C               for the keep-outs in the rows below it; 0 before the first
//     units,mm or units,inch    before all keep-outs; mm without it
// Separators, numbers and remarks are those of every table that the tool reads; there is no header.
#pragma once

#include <nmktoolbox/ordering/nmkTravelKeepOut.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "text/result.h"

namespace nmk_keep_outs {

/// By how much a circle, or the rounded corner of a clearance, is larger than its true shape at
/// most, in mm.
constexpr double chord_error = 0.01;
/// What is added to each clearance, in mm: more than the rounding of coordinates in any output, so
/// that a way in an output does not cross the keep-out of the file, and keep-outs that touch leave
/// no gap.
constexpr double rounding_margin = 0.001;
/// The largest coordinate, radius and clearance, in the unit of the file.
constexpr double max_number = 1e6;

struct KeepOut {
    std::size_t line = 0;    // of its row, from 1
    nmkTravelKeepOut bare;   // mm; the shape itself
    nmkTravelKeepOut shape;  // mm; with its clearance and the margin
};

/// The keep-outs in the order of their rows, or an Error: also for polygons whose edges cross, and
/// for more corners than nmkTravelKeepOut::max_corners.
nmk_text::Result<std::vector<KeepOut>> read_keep_outs(const std::string& file_name,
                                                      std::string_view text);

}  // namespace nmk_keep_outs
