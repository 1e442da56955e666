// compare_command.h: `nmk curve compare`.
#pragma once

#include <ostream>

#include "commands/curve/curve_options.h"

namespace nmk_curve {

/// Returns 0 where the curves are the same, 1 where they differ, 2 for an output that cannot be
/// written; what is wrong with the files is thrown as an Error.
int compare_files(const CurveOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nmk_curve
