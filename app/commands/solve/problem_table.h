// problem_table.h: reads a table of problems, one in each row.
//
// A row is the name of a kind and its numbers, `polynomial,1,-3,2`, or the numbers alone if the
// kind is given. Empty cells at the end of a row are ignored. Separators, headers and remarks are
// those of every table that the tool reads. Rows are read one by one, so that a table needs no
// memory besides its text.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "commands/solve/solve_problem.h"
#include "text/result.h"

namespace nmk_solve {

/// Calls `take` with each problem and the number of its line; returns the Error of the first row
/// that is not a problem. `kind` is null if each row names its own.
nmk_text::Result<void> read_problem_table(
    const std::string& file_name, std::string_view text, const KindFacts* kind,
    const std::function<void(const Problem&, std::size_t line)>& take);

}  // namespace nmk_solve
