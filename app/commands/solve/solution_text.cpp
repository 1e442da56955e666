// solution_text: the result of a problem as lines for a person, and as a JSON object for a program.

#include "commands/solve/solution_text.h"

#include <algorithm>
#include <cmath>

#include "text/escaped_text.h"
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

std::string number_json(double value) {
    return std::isfinite(value) ? nmk_text::readable_number(value) : "null";
}

std::string solution_json(const Cells& names, const Solution& solution) {
    std::string text;
    std::size_t column = 0;
    for (const auto* const numbers : {&solution.values, &solution.residuals}) {
        for (const double number : *numbers) {
            std::string name = names[column++];
            std::replace(name.begin(), name.end(), ' ', '_');
            text +=
                (text.empty() ? "" : ", ") + nmk_text::json_text(name) + ": " + number_json(number);
        }
    }
    return "{" + text + "}";
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

std::string answer_json(const Answer& answer, std::size_t line) {
    const Cells names = names_of(answer);
    std::string solutions;
    for (const Solution& solution : answer.solutions) {
        solutions += (solutions.empty() ? "" : ", ") + solution_json(names, solution);
    }
    std::string text = "{";
    text += line > 0 ? "\"line\": " + std::to_string(line) + ", " : "";
    text += "\"problem\": " + nmk_text::json_text(answer.problem) + ", \"solutions\": [" +
            solutions + "]";
    return text + (answer.note.empty() ? "" : ", \"note\": " + nmk_text::json_text(answer.note)) +
           "}";
}

}  // namespace nmk_solve
