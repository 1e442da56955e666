// closest_command.h: `nmk curve closest`.
#pragma once

#include <ostream>

#include "commands/curve/curve_options.h"

namespace nmk_curve {

/// Returns the exit code; what is wrong with the file is thrown as an Error.
int find_closest(const CurveOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nmk_curve
