// solution_text: the result of a problem as lines for a person.

#include "commands/solve/solution_text.h"

#include <algorithm>

#include "text/number_format.h"
#include "text/wrapped_text.h"

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

std::vector<std::size_t> widths_of(const std::vector<Cells>& rows) {
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const Cells& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    return widths;
}

/// The columns from `first` to the one before `end`, each after two blanks.
std::string columns_text(const std::vector<Cells>& rows, const std::vector<std::size_t>& widths,
                         std::size_t first, std::size_t end) {
    std::string text;
    for (const Cells& row : rows) {
        std::string line;
        for (std::size_t i = first; i < end; ++i) {
            line += "  " + row[i] + std::string(widths[i] - row[i].size(), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

/// The numbers keep all their digits; columns for which a line has no room follow below.
std::string table_text(const std::vector<Cells>& rows) {
    const std::vector<std::size_t> widths = widths_of(rows);
    std::string text;
    for (std::size_t first = 0, end = 0; first < widths.size(); first = end) {
        std::size_t width = 0;
        while (end < widths.size() &&
               (end == first || width + 2 + widths[end] <= nmk_text::terminal_columns)) {
            width += 2 + widths[end++];
        }
        text += columns_text(rows, widths, first, end);
    }
    return text;
}

std::string wrapped_line(const std::string& text, std::size_t indent) {
    return nmk_text::wrapped(text, indent, nmk_text::terminal_columns);
}

}  // namespace

std::string solution_text(const Answer& answer, std::size_t line) {
    std::string text = line > 0 ? std::to_string(line) + ": " : std::string();
    text += answer.problem + ": " + count_text(answer.solutions.size());
    text = wrapped_line(text, 0);
    if (!answer.solutions.empty()) {
        std::vector<Cells> rows = {names_of(answer)};
        for (const Solution& solution : answer.solutions) {
            rows.push_back(cells_of(solution));
        }
        text += table_text(rows);
    }
    return text + (answer.note.empty() ? "" : wrapped_line("(" + answer.note + ")", 2));
}

}  // namespace nmk_solve
