// part_view: maps points of the part to the drawing: seen from above, y upwards.

#include "commands/order/part_view.h"

#include <algorithm>
#include <limits>

#include "commands/order/avoided.h"

namespace nmk_order {

namespace {

constexpr double margin = 0.06;          // of the larger side, around the cuts
constexpr double smallest_extent = 1.0;  // mm, for a single hole without a diameter

void include(PartExtent& extent, const giPoint3& p, double radius) {
    extent.min_x = std::min(extent.min_x, p.x - radius);
    extent.max_x = std::max(extent.max_x, p.x + radius);
    extent.min_y = std::min(extent.min_y, p.y - radius);
    extent.max_y = std::max(extent.max_y, p.y + radius);
}

void include_keep_outs(PartExtent& extent, const Avoided& avoided) {
    for (const nmkTravelKeepOut& shape : avoided.shapes()) {
        for (const std::vector<giPoint2>& part : shape.parts) {
            for (const giPoint2& corner : part) {
                include(extent, {corner.x, corner.y, 0.0}, 0.0);
            }
        }
    }
}

}  // namespace

PartExtent part_extent(const nmk_job::MachiningJob& job, const std::vector<OrderRun>& runs) {
    constexpr double far = std::numeric_limits<double>::max();
    PartExtent extent{far, far, -far, -far};
    for (const nmk_job::JobItem& item : job.items) {
        const double radius = job.tools[item.tool].diameter.value_or(0.0) / 2.0;
        include(extent, item.start, radius);
        include(extent, item.end.value_or(item.start), radius);
    }
    for (const OrderRun& run : runs) {
        for (const std::optional<giPoint3>& place : {run.ends.start, run.ends.end}) {
            if (place && run.count > 0) {
                include(extent, *place, 0.0);
            }
        }
    }
    if (const Avoided* avoided = avoided_by(runs)) {
        include_keep_outs(extent, *avoided);
    }
    if (extent.min_x > extent.max_x) {
        extent = {0.0, 0.0, 0.0, 0.0};
    }
    const double side = std::max({extent.width(), extent.height(), smallest_extent});
    return {extent.min_x - side * margin, extent.min_y - side * margin,
            extent.max_x + side * margin, extent.max_y + side * margin};
}

}  // namespace nmk_order
