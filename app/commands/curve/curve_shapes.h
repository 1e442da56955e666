// curve_shapes.h: the curve that the arguments of `nmk curve` describe.
#pragma once

#include <ngk/ngkCurve.h>

#include "commands/curve/curve_options.h"
#include "text/result.h"

namespace nmk_curve {

/// The curve of a shape, which is valid; an Error that says what its arguments have to be.
nmk_text::Result<ngkCurvePtr3> make_shape(const CurveOptions& options);

}  // namespace nmk_curve
