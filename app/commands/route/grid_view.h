// grid_view.h: maps the cells of a lattice to the drawing.
//
// Rows of a map run downwards, as in its file; those of a list of points upwards.
#pragma once

#include "draw/svg_document.h"
#include "formats/lattice/route_plane.h"

namespace nmk_route {

/// The position of the cells in the drawing, in pixels.
struct GridView {
    nmk_draw::SvgPoint corner;  // upper left
    double cell_width = 1.0;
    double cell_height = 1.0;
    int columns = 1;
    int rows = 1;
    bool downwards = true;

    double width() const { return cell_width * columns; }
    double height() const { return cell_height * rows; }
    double right() const { return corner.x + width(); }
    double bottom() const { return corner.y + height(); }
    int drawn_row(int row) const { return downwards ? row : rows - 1 - row; }

    nmk_draw::SvgPoint middle(nmk_lattice::GridCell cell) const {
        return {corner.x + (cell.column + 0.5) * cell_width,
                corner.y + (drawn_row(cell.row) + 0.5) * cell_height};
    }

    /// The position of a point that need not be on the lattice.
    nmk_draw::SvgPoint at(const nmk_lattice::RoutePlane& plane, const giPoint2& point) const {
        const giPoint2 searched = plane.search_point(point);
        const giPoint2 steps = plane.search_steps();
        const double row = searched.y / steps.y;
        const double drawn = downwards ? row : rows - 1 - row;
        return {corner.x + (searched.x / steps.x + 0.5) * cell_width,
                corner.y + (drawn + 0.5) * cell_height};
    }
};

}  // namespace nmk_route
