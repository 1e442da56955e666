// order_places.h: the marks of the places where the travel starts and ends, where they are given.
#pragma once

#include <geometry/giPoint3.h>

#include <optional>
#include <vector>

#include "commands/order/order_job.h"
#include "commands/order/part_view.h"
#include "draw/svg_document.h"

namespace nmk_order {

/// The places of the runs that have items; they are the same for all of them.
struct TravelPlaces {
    std::optional<giPoint3> start, end;  // mm; an end that is the start place is not marked
};

TravelPlaces travel_places(const std::vector<OrderRun>& runs);

void draw_places(nmk_draw::SvgDocument& svg, const TravelPlaces& places, const PartView& view);

/// A green cross and a dark diagonal one; also for the legend.
void draw_start_place(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);
void draw_end_place(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);

}  // namespace nmk_order
