// problem_table: reads a table of problems, one in each row.

#include "commands/solve/problem_table.h"

#include <vector>

#include "text/csv_rows.h"
#include "text/escaped_text.h"

namespace nmk_solve {

namespace {

/// The cells without quotation marks, and without the empty ones at the end.
std::vector<std::string_view> cells_of(const nmk_text::CsvRow& row) {
    std::vector<std::string_view> cells;
    for (std::size_t i = 0; i < std::min(row.count, nmk_text::max_csv_columns); ++i) {
        cells.push_back(row.bare(i));
    }
    while (!cells.empty() && cells.back().empty()) {
        cells.pop_back();
    }
    return cells;
}

nmk_text::Result<Problem> problem_of(const nmk_text::CsvRow& row, const KindFacts* kind) {
    if (row.count > nmk_text::max_csv_columns) {
        return nmk_text::Error{{},
                               0,
                               std::to_string(row.count) + " columns; expected at most " +
                                   std::to_string(nmk_text::max_csv_columns)};
    }
    const std::vector<std::string_view> cells = cells_of(row);
    if (kind != nullptr) {
        return read_problem(*kind, cells);
    }
    const std::string_view name = cells.empty() ? std::string_view() : cells[0];
    const KindFacts* const named = kind_of_name(name);
    if (named == nullptr) {
        return nmk_text::Error{
            {}, 0, "unknown kind " + nmk_text::quoted(name) + "; expected " + kind_list()};
    }
    return read_problem(*named, std::span(cells).subspan(1));
}

}  // namespace

nmk_text::Result<void> read_problem_table(
    const std::string& file_name, std::string_view text, const KindFacts* kind,
    const std::function<void(const Problem&, std::size_t line)>& take) {
    nmk_text::CsvRows rows(text);
    nmk_text::CsvRow row;
    for (bool is_first = true; rows.next(row); is_first = false) {
        const bool is_named = kind_of_name(row.bare(0)) != nullptr;
        if (is_first && !is_named && row.is_header()) {
            continue;
        }
        const auto problem = problem_of(row, kind);
        if (!problem) {
            return nmk_text::Error{file_name, row.number, problem.error().message};
        }
        take(*problem, row.number);
    }
    return {};
}

}  // namespace nmk_solve
