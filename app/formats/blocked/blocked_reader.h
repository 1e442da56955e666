// blocked_reader.h: reads a table of blocked places.
//
// A row is `x,y`, or says how large the plane is and how far apart its places are:
// `box,X0,Y0,X1,Y1` (lower left and upper right corner) and `steps,SX,SY`. Separators, numbers,
// headers and remarks are those of every table that the tool reads.
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
    std::vector<giPoint2> places;
};

/// The box of four numbers, or one line that says what is wrong with them.
nmk_text::Result<PlaneBox> checked_box(const std::vector<double>& numbers);

/// The steps of one number, for both directions, or of two; or one line.
nmk_text::Result<giPoint2> checked_steps(const std::vector<double>& numbers);

/// The list, or one line on what is wrong with it.
nmk_text::Result<BlockedList> read_blocked_list(const std::string& file_name,
                                                std::string_view text);

/// The lattice through `start` that fills the box, and how many places of the list do not stand on
/// it. Box and steps must be there. One line where it has too many places or `start` is outside.
struct ListPlane {
    nmk_lattice::RoutePlane plane;
    std::size_t off_lattice = 0;
};
nmk_text::Result<ListPlane> plane_of_list(const BlockedList& list, giPoint2 start);

}  // namespace nmk_blocked
