// read_plane.h: the lattice of a file, be it a map or a list of blocked places.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "commands/route/route_options.h"
#include "files/job_error.h"
#include "formats/lattice/route_plane.h"

namespace nmk_route {

/// The lattice, and what a person should know of it.
struct PlaneOfFile {
    nmk_lattice::RoutePlane plane;
    std::vector<std::string> notes;
};

/// Reads the file that the options name; one line where that cannot be.
std::variant<PlaneOfFile, nmk_files::Error> read_plane_file(const RouteOptions& options);

/// The same for the text of that file.
std::variant<PlaneOfFile, nmk_files::Error> read_plane_text(const RouteOptions& options,
                                                            const std::string& text);

}  // namespace nmk_route
