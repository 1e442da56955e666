// solution_text.h: the result of a problem as lines for a person.
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

}  // namespace nmk_solve
