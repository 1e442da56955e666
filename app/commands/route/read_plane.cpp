// read_plane: reads a map or a list of blocked points as a lattice.

#include "commands/route/read_plane.h"

#include "files/read_whole_file.h"
#include "formats/blocked/blocked_reader.h"
#include "formats/octile/map_reader.h"

namespace nmk_route {

namespace {

std::string input_of(const RouteOptions& options) {
    return nmk_files::input_name(options.file_name);
}

nmk_text::Result<PlaneOfFile> plane_of_map(const RouteOptions& options, const std::string& text) {
    if (options.box || options.steps) {
        return nmk_text::Error{input_of(options), 0,
                               std::string(options.box ? "--box" : "--steps") +
                                   " applies to lists of blocked points; a map has its own"};
    }
    auto plane = nmk_octile::read_octile_map(input_of(options), text);
    if (!plane) {
        return plane.error();
    }
    return PlaneOfFile{*std::move(plane), {}};
}

std::string off_lattice_note(std::size_t off_lattice, std::size_t points) {
    return std::to_string(off_lattice) + " of " + std::to_string(points) +
           " blocked points are outside the box or off the lattice and block nothing";
}

nmk_text::Result<PlaneOfFile> plane_of_blocked(const RouteOptions& options,
                                               const std::string& text) {
    auto read = nmk_blocked::read_blocked_list(input_of(options), text);
    if (!read) {
        return read.error();
    }
    auto& list = *read;
    list.box = options.box ? options.box : list.box;
    list.steps = options.steps ? options.steps : list.steps;
    if (!list.box || !list.steps) {
        return nmk_text::Error{input_of(options), 0,
                               std::string("has no ") + (list.box ? "steps" : "box") +
                                   "; expected a row " +
                                   (list.box ? "steps,SX,SY or --steps SX,SY"
                                             : "box,X0,Y0,X1,Y1 or --box X0,Y0,X1,Y1")};
    }
    auto made = nmk_blocked::plane_of_list(list, *options.start);
    if (!made) {
        return made.error().in_file(input_of(options));
    }
    auto& of_list = *made;
    PlaneOfFile result{std::move(of_list.plane), {}};
    if (of_list.off_lattice > 0) {
        result.notes.push_back(off_lattice_note(of_list.off_lattice, list.points.size()));
    }
    return result;
}

}  // namespace

nmk_text::Result<PlaneOfFile> read_plane_file(const RouteOptions& options) {
    const nmk_text::Result<std::string> text = nmk_files::read_input(options.file_name);
    if (!text) {
        return text.error();
    }
    return read_plane_text(options, *text);
}

nmk_text::Result<PlaneOfFile> read_plane_text(const RouteOptions& options,
                                              const std::string& text) {
    if (const auto checked = nmk_files::check_text_file(input_of(options), text); !checked) {
        return checked.error();
    }
    return nmk_octile::is_octile_map(text) ? plane_of_map(options, text)
                                           : plane_of_blocked(options, text);
}

}  // namespace nmk_route
