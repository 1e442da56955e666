// order_places: the marks of the places where the travel starts and ends, where they are given.

#include "commands/order/order_places.h"

#include "draw/mark_group.h"

namespace nmk_order {

namespace {

constexpr double arm = 7.0;  // of a cross, in pixels

void draw_cross(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at, double x, double y,
                const std::string& colour) {
    svg.open_group("class=\"place\" stroke-width=\"2.5\" stroke=\"" + colour + "\"");
    svg.line({at.x - x, at.y - y}, {at.x + x, at.y + y});
    svg.line({at.x - y, at.y + x}, {at.x + y, at.y - x});
    svg.close_group();
}

}  // namespace

TravelPlaces travel_places(const std::vector<OrderRun>& runs) {
    TravelPlaces places;
    for (const OrderRun& run : runs) {
        if (run.count > 0) {
            places.start = places.start ? places.start : run.ends.start;
            places.end = places.end ? places.end : run.ends.end;
        }
    }
    if (places.end == places.start) {
        places.end.reset();
    }
    return places;
}

void draw_places(nmk_draw::SvgDocument& svg, const TravelPlaces& places, const PartView& view) {
    if (places.end) {
        nmk_draw::draw_mark(svg, view.at(*places.end), "", [&] { draw_end_place(svg, {}); });
    }
    if (places.start) {
        nmk_draw::draw_mark(svg, view.at(*places.start), "", [&] { draw_start_place(svg, {}); });
    }
}

void draw_start_place(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    draw_cross(svg, at, arm, 0.0, "#1e8e3e");
}

void draw_end_place(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    draw_cross(svg, at, arm * 0.75, arm * 0.75, "#202124");
}

}  // namespace nmk_order
