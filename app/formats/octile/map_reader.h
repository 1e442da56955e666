// map_reader.h: reads a grid map in the octile text format.
//
// Four header lines (`type octile`, `height H`, `width W`, `map`; height and width in either
// order), then H rows of W letters. `.`, `G` and `S` (ground and swamp) are free; `@`, `O`, `T` and
// `W` (out of bounds, trees, water) are blocked. x counts columns from the left, y rows from the
// top, both from 0; the steps are 1.
#pragma once

#include <string>
#include <string_view>

#include "formats/lattice/route_plane.h"
#include "text/result.h"

namespace nmk_octile {

/// True if the text begins like such a map.
bool is_octile_map(std::string_view text);

/// The map, or an Error.
nmk_text::Result<nmk_lattice::RoutePlane> read_octile_map(const std::string& file_name,
                                                          std::string_view text);

}  // namespace nmk_octile
