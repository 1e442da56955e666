// curve_pieces.h: the pieces that a curve is made of.
#pragma once

#include <ngk/ngkCurve.h>

#include <optional>
#include <vector>

#include "text/result.h"

namespace nmk_curve {

/// The simple pieces of a curve; with `piece` those of a polyline, of so many points each, which
/// share their ends. An Error for any other curve with `piece`.
nmk_text::Result<std::vector<ngkCurvePtr3>> curve_pieces(const ngkCurvePtr3& curve,
                                                         std::optional<int> piece);

}  // namespace nmk_curve
