// solution_text.h: the result of a problem as lines for a person, and as a JSON object for a
// program.
//
// Numbers have as many digits as are needed to read them back exactly.
#pragma once

#include <cstddef>
#include <string>

#include "commands/solve/solve_answer.h"

namespace nmk_solve {

/// The problem with the number of solutions, a table of them, and the note. A `line` above 0, the
/// line of a table, is printed first.
std::string solution_text(const Answer& answer, std::size_t line);

/// {"line": 3, "problem": ..., "solutions": [{"x": 1, "residual": 0}], "note": ...}, without a line
/// feed at the end; no "line" for 0, and null for a number that is not finite.
std::string answer_json(const Answer& answer, std::size_t line);

}  // namespace nmk_solve
