// polynomial_picture.h: the curve of a polynomial, and its real roots on the axis.
#pragma once

#include <string>
#include <vector>

#include "commands/solve/solve_answer.h"

namespace nmk_solve {

/// The picture as an SVG document. Every root and every turning point is in its range and
/// marked.
std::string polynomial_picture(const std::vector<double>& coefficients, const Answer& answer);

}  // namespace nmk_solve
