// read_plane.h: reads a map or a list of blocked points as a lattice.
#pragma once

#include <string>
#include <vector>

#include "commands/route/route_options.h"
#include "formats/lattice/route_plane.h"
#include "text/result.h"

namespace nmk_route {

/// The lattice, and notes for a person.
struct PlaneOfFile {
    nmk_lattice::RoutePlane plane;
    std::vector<std::string> notes;
};

/// Reads the file that the options name.
nmk_text::Result<PlaneOfFile> read_plane_file(const RouteOptions& options);

/// The same for the text of that file.
nmk_text::Result<PlaneOfFile> read_plane_text(const RouteOptions& options, const std::string& text);

}  // namespace nmk_route
