// solution_json.h: the result of a problem, or of a table of them, as JSON for a program.
//
// A single problem is one object. A table is an object whose member "problems" is a list with the
// same object for each row, which has the number of its line too; rows are written as they are
// solved, so that a table needs no memory besides its text.
#pragma once

#include <cstddef>
#include <string>

#include "commands/solve/solve_answer.h"

namespace nmk_solve {

/// The document of one problem.
std::string answer_document(const Answer& answer);

/// One row of a table, without a line feed.
std::string answer_row(const Answer& answer, std::size_t line);

/// The beginning of the document of a table, up to its first row; "]}" ends it.
std::string table_opening();

}  // namespace nmk_solve
