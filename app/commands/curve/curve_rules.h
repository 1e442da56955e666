// curve_rules.h: which arguments of `nmk curve` go together.
#pragma once

#include <geometry/giPoint3.h>

#include <optional>
#include <string>

#include "shell/option_values.h"

namespace nmk_curve {

struct CurveOptions;

/// The point "X,Y" or "X,Y,Z"; empty if the text is not one.
std::optional<giPoint3> point_of_text(const std::string& text);

/// Divides the words into points and files, and returns the first problem of the arguments.
nmk_shell::Problem check_curve_options(CurveOptions& options);

}  // namespace nmk_curve
