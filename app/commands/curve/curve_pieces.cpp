// curve_pieces: the pieces that a curve is made of.

#include "commands/curve/curve_pieces.h"

#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkSubCurves.h>
#include <nmktoolbox/curves/nmkPolySplitter.h>

namespace nmk_curve {

namespace {

std::vector<ngkCurvePtr3> cut(const ngkPolyline3& polyline, int piece) {
    std::vector<ngkCurvePtr3> pieces;
    nmkPolySplitter splitter(polyline.point_count(), piece);
    int first = 0;
    int last = 0;
    while (const int count = splitter.next(first, last)) {
        pieces.emplace_back(new ngkPolyline3(polyline.points().subspan(
            static_cast<std::size_t>(first), static_cast<std::size_t>(count))));
    }
    return pieces;
}

}  // namespace

nmk_text::Result<std::vector<ngkCurvePtr3>> curve_pieces(const ngkCurvePtr3& curve,
                                                         std::optional<int> piece) {
    if (!piece) return nmkNgkSubCurves::sub_curves(curve);
    const auto* const polyline = dynamic_cast<const ngkPolyline3*>(curve.get());
    if (polyline == nullptr) {
        return nmk_text::Error{{}, 0, "--piece: the curve is another kind; expected a polyline"};
    }
    return cut(*polyline, *piece);
}

}  // namespace nmk_curve
