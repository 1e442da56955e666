// curve_pieces: the pieces that a curve is made of.

#include "commands/curve/curve_pieces.h"

#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkSubCurves.h>
#include <nmktoolbox/curves/nmkPolySplitter.h>

namespace nmk_curve {

namespace {

// More of them cost too much memory.
constexpr int max_pieces = 250'000;

std::vector<ngkCurvePtr3> cut(const ngkPolyline3& polyline, int piece) {
    std::vector<ngkCurvePtr3> pieces;
    nmkPolySplitter splitter(polyline.point_count(), piece);
    if (splitter.num_seg() > max_pieces) {
        throw nmk_text::Error{{},
                              0,
                              "--piece " + std::to_string(piece) + " makes " +
                                  std::to_string(splitter.num_seg()) +
                                  " pieces; expected at most " + std::to_string(max_pieces)};
    }
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
    return nmk_text::value_or_error({}, [&] { return cut(*polyline, *piece); });
}

}  // namespace nmk_curve
