// solution_table.h: the results of problems as one CSV table, a row for each solution.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "commands/solve/solve_answer.h"

namespace nmk_solve {

/// Collects results of any kinds.
///
/// The columns are `line`, `problem` and `solution` (from 1), the values and residuals of all kinds
/// in the order in which they first occur, with `_` instead of blanks, and `note`. A cell that does
/// not apply is empty; a problem without a solution has one row.
class SolutionTable {
  public:
    /// `line` is that of the problem in its table; 0 if it was not in one.
    void add(const Answer& answer, std::size_t line);

    /// The whole table. Numbers have as many digits as are needed to read them back exactly.
    std::string text() const;

  private:
    struct Row {
        std::size_t line;
        std::string problem;
        std::size_t solution;  // 0: none
        std::vector<std::string> cells;
        std::string note;
    };

    std::size_t column_of(const std::string& name);
    void add_cells(Row& row, const std::vector<std::string>& names,
                   const std::vector<double>& numbers);

    std::vector<std::string> m_columns;
    std::vector<Row> m_rows;
};

}  // namespace nmk_solve
