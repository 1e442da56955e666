// blocked_reader.h: reads a table of blocked points.
//
// A row is a point `x,y`, the extent of the plane `box,X0,Y0,X1,Y1` (lower left and upper right
// corner) or the steps of its lattice `steps,SX,SY`. Separators, numbers, headers and remarks are
// those of every table that the tool reads.
#pragma once

#include <geometry/giPoint2.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/lattice/route_plane.h"
#include "text/result.h"

namespace nmk_blocked {

struct PlaneBox {
    giPoint2 lower, upper;
};

struct BlockedList {
    std::optional<PlaneBox> box;
    std::optional<giPoint2> steps;
    std::vector<giPoint2> points;
};

/// The box of four numbers, or an Error.
nmk_text::Result<PlaneBox> checked_box(const std::vector<double>& numbers);

/// The steps of one number, for both directions, or of two; or an Error.
nmk_text::Result<giPoint2> checked_steps(const std::vector<double>& numbers);

/// The list, or an Error.
nmk_text::Result<BlockedList> read_blocked_list(const std::string& file_name,
                                                std::string_view text);

/// The lattice through `start` that fills the box, and the number of points of the list that are
/// not on it.
struct ListPlane {
    nmk_lattice::RoutePlane plane;
    std::size_t off_lattice = 0;
};

/// The plane of a list with box and steps. An Error if it has too many cells or `start` is outside.
nmk_text::Result<ListPlane> plane_of_list(const BlockedList& list, giPoint2 start);

}  // namespace nmk_blocked
