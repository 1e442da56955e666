// solution_table: the results of problems as one CSV table, a row for each solution.

#include "commands/solve/solution_table.h"

#include <algorithm>

#include "text/number_format.h"

namespace nmk_solve {

namespace {

/// A cell with quotation marks around it where it needs them.
std::string cell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char letter : text) {
        quoted += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    return quoted + "\"";
}

std::string count_cell(std::size_t count) { return count == 0 ? "" : std::to_string(count); }

}  // namespace

std::size_t SolutionTable::column_of(const std::string& name) {
    std::string column = name;
    std::replace(column.begin(), column.end(), ' ', '_');
    const auto found = std::find(m_columns.begin(), m_columns.end(), column);
    const auto position = static_cast<std::size_t>(found - m_columns.begin());
    if (found == m_columns.end()) {
        m_columns.push_back(column);
    }
    return position;
}

void SolutionTable::add_cells(Row& row, const std::vector<std::string>& names,
                              const std::vector<double>& numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t column = column_of(names[i]);
        row.cells.resize(std::max(row.cells.size(), column + 1));
        row.cells[column] = nmk_text::exact_number(numbers[i]);
    }
}

void SolutionTable::add(const Answer& answer, std::size_t line) {
    if (answer.solutions.empty()) {
        m_rows.push_back({line, answer.problem, 0, {}, answer.note});
    }
    for (std::size_t i = 0; i < answer.solutions.size(); ++i) {
        Row row{line, answer.problem, i + 1, {}, answer.note};
        add_cells(row, answer.value_names, answer.solutions[i].values);
        add_cells(row, answer.residual_names, answer.solutions[i].residuals);
        m_rows.push_back(std::move(row));
    }
}

std::string SolutionTable::text() const {
    std::string text = "line,problem,solution,";
    for (const std::string& column : m_columns) {
        text += cell(column) + ",";
    }
    text += "note\n";
    for (const Row& row : m_rows) {
        text +=
            count_cell(row.line) + "," + cell(row.problem) + "," + count_cell(row.solution) + ",";
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            text += (i < row.cells.size() ? row.cells[i] : "") + ",";
        }
        text += cell(row.note) + "\n";
    }
    return text;
}

}  // namespace nmk_solve
