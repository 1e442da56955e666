// problem_table.h: reads a table of problems, a row each.
//
// A row is the name of a kind and its numbers, `polynomial,1,-3,2`; where the kind is known
// beforehand, the numbers alone. Empty cells at the end of a row are passed over. Separators,
// headers and remarks are those of every table that the tool reads. Rows are handed out one by one,
// so that a table of any length takes no memory beside its text.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "commands/solve/solve_problem.h"
#include "text/result.h"

namespace nmk_solve {

/// Calls `take` with each problem and the number of its line. The first row that is no problem ends
/// it, and is answered. `kind` is null where each row names its own.
nmk_text::Result<void> read_problem_table(
    const std::string& file_name, std::string_view text, const KindFacts* kind,
    const std::function<void(const Problem&, std::size_t line)>& take);

}  // namespace nmk_solve
