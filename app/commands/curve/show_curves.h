// show_curves.h: reports, writes and draws curves: a shape that is made, those of a file, pieces.
#pragma once

#include <ostream>

#include "commands/curve/curve_options.h"

namespace nmk_curve {

// Each returns the exit code, and throws what is wrong with its input as an Error.
int show_shape(const CurveOptions& options, std::ostream& out, std::ostream& err);
int show_file(const CurveOptions& options, std::ostream& out, std::ostream& err);
int show_pieces(const CurveOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nmk_curve
