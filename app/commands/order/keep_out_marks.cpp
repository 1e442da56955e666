// keep_out_marks: keep-outs in the drawing: the shapes, and around them their clearances.

#include "commands/order/keep_out_marks.h"

#include <vector>

namespace nmk_order {

namespace {

constexpr const char* clearance_style =
    "class=\"clearance\" fill=\"#f3d9d6\" stroke=\"#d9a7a2\" stroke-width=\"1\"";
constexpr const char* shape_style = "class=\"keep-out\" fill=\"#c9827b\" stroke=\"none\"";

nmk_draw::SvgPath outline(const PartView& view, const nmkTravelKeepOut& keep_out) {
    nmk_draw::SvgPath path;
    for (const std::vector<giPoint2>& part : keep_out.parts) {
        for (std::size_t i = 0; i < part.size(); ++i) {
            const giPoint2& from = part[i];
            const giPoint2& to = part[(i + 1) % part.size()];
            path.line(view.at({from.x, from.y, 0.0}), view.at({to.x, to.y, 0.0}));
        }
    }
    return path;
}

}  // namespace

void draw_keep_outs(nmk_draw::SvgDocument& svg, const PartView& view, const Avoided& avoided) {
    svg.open_group("class=\"keep-outs\"");
    for (const nmk_keep_outs::KeepOut& keep_out : avoided.keep_outs()) {
        svg.path(outline(view, keep_out.shape), clearance_style);
    }
    for (const nmk_keep_outs::KeepOut& keep_out : avoided.keep_outs()) {
        svg.path(outline(view, keep_out.bare), shape_style);
    }
    svg.close_group();
}

void draw_keep_out_sample(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    svg.rectangle({at.x, at.y - 7}, 22, 14, clearance_style);
    svg.rectangle({at.x + 4, at.y - 3}, 14, 6, shape_style);
}

}  // namespace nmk_order
