// solution_text: the result of a problem as lines for a person.

#include "commands/solve/solution_text.h"

#include <algorithm>

#include "text/number_format.h"

namespace nmk_solve {

namespace {

using Cells = std::vector<std::string>;

std::string count_text(std::size_t count) {
    return count == 0   ? "no solution"
           : count == 1 ? "1 solution"
                        : std::to_string(count) + " solutions";
}

Cells cells_of(const Solution& solution) {
    Cells cells;
    for (const auto* const numbers : {&solution.values, &solution.residuals}) {
        for (const double number : *numbers) {
            cells.push_back(nmk_text::readable_number(number));
        }
    }
    return cells;
}

Cells names_of(const Answer& answer) {
    Cells names = answer.value_names;
    names.insert(names.end(), answer.residual_names.begin(), answer.residual_names.end());
    return names;
}

std::string table_text(const std::vector<Cells>& rows) {
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const Cells& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    std::string text;
    for (const Cells& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += "  " + row[i] + std::string(widths[i] - row[i].size(), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}  // namespace

std::string solution_text(const Answer& answer, std::size_t line) {
    std::string text = line > 0 ? std::to_string(line) + ": " : std::string();
    text += answer.problem + ": " + count_text(answer.solutions.size()) + "\n";
    if (!answer.solutions.empty()) {
        std::vector<Cells> rows = {names_of(answer)};
        for (const Solution& solution : answer.solutions) {
            rows.push_back(cells_of(solution));
        }
        text += table_text(rows);
    }
    return text + (answer.note.empty() ? "" : "  (" + answer.note + ")\n");
}

}  // namespace nmk_solve
