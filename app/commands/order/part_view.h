// part_view.h: maps points of the part to the drawing: seen from above, y upwards.
#pragma once

#include <geometry/giPoint3.h>

#include <vector>

#include "commands/order/order_job.h"
#include "draw/svg_document.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

/// The rectangle that is shown, in mm: from the lower left to the upper right corner.
struct PartExtent {
    double min_x = 0.0, min_y = 0.0, max_x = 0.0, max_y = 0.0;

    double width() const { return max_x - min_x; }
    double height() const { return max_y - min_y; }
};

/// The extent of all cuts, with the width of their tools, the places where the travel starts and
/// ends, the keep-outs, and a margin; never empty.
PartExtent part_extent(const nmk_job::MachiningJob& job, const std::vector<OrderRun>& runs);

/// Maps millimetres to pixels, with the same scale in x and y.
struct PartView {
    PartExtent extent;
    double scale = 1.0;         // pixels per mm
    nmk_draw::SvgPoint corner;  // upper left, in pixels

    nmk_draw::SvgPoint at(const giPoint3& p) const {
        return {corner.x + (p.x - extent.min_x) * scale, corner.y + (extent.max_y - p.y) * scale};
    }
    double width() const { return extent.width() * scale; }
    double height() const { return extent.height() * scale; }
};

}  // namespace nmk_order
