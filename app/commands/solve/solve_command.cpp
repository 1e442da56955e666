// solve_command: `nmk solve KIND NUMBERS`: computes roots, angles and probabilities.

#include "commands/solve/solve_command.h"

#include <algorithm>
#include <cmath>

#include "commands/solve/polynomial_picture.h"
#include "commands/solve/problem_table.h"
#include "commands/solve/solution_json.h"
#include "commands/solve/solution_text.h"
#include "commands/solve/solve_answer.h"
#include "commands/solve/solve_options.h"
#include "files/read_whole_file.h"
#include "files/write_all_files.h"
#include "shell/command_result.h"

namespace nmk_solve {

namespace {

/// Prints the answers to a table that was checked, each as soon as it is solved.
nmk_text::Result<void> print_table(const SolveOptions& options, const std::string& text,
                                   std::ostream& out) {
    bool is_first = true;
    if (options.json) {
        out << table_opening();
    }
    auto checked = read_problem_table(
        options.csv_file, text, options.kind, [&](Problem problem, std::size_t line) {
            problem.certified = options.certified;
            const Answer answer = solve_problem(problem);
            if (options.json) {
                out << (is_first ? "\n  " : ",\n  ") << answer_row(answer, line);
            } else if (!options.quiet) {
                out << solution_text(answer, line);
            }
            is_first = false;
        });
    if (options.json) {
        out << "]}\n";
    }
    return checked;
}

int solve_table(const SolveOptions& options, std::ostream& out, std::ostream& err) {
    const nmk_text::Result<std::string> read = nmk_files::read_whole_file(options.csv_file);
    if (!read) {
        return nmk_shell::refuse(err, read.error().text());
    }
    const auto& text = *read;
    if (const auto checked = nmk_files::check_text_file(options.csv_file, text); !checked) {
        return nmk_shell::refuse(err, checked.error().text());
    }
    const auto ignore = [](const Problem&, std::size_t) {};
    if (const auto checked = read_problem_table(options.csv_file, text, options.kind, ignore);
        !checked) {
        return nmk_shell::refuse(err, checked.error().text());
    }
    if (const auto printed = print_table(options, text, out); !printed) {
        return nmk_shell::refuse(err, printed.error().text());
    }
    return nmk_shell::finish(out, err, "the answers");
}

/// The answer without the roots beyond the largest double, which cannot be drawn.
Answer drawn_part(Answer answer) {
    std::erase_if(answer.solutions, [](const Solution& solution) {
        return !std::all_of(solution.values.begin(), solution.values.end(),
                            [](double value) { return std::isfinite(value); });
    });
    return answer;
}

int solve_one(const SolveOptions& options, std::ostream& out, std::ostream& err) {
    const Answer answer = solve_problem(options.problem);
    nmk_files::WrittenFiles written;
    if (!options.svg_file.empty()) {
        const std::string picture = polynomial_picture(options.problem.numbers, drawn_part(answer));
        auto files = nmk_files::write_all_files({{options.svg_file, picture}});
        if (!files) {
            return nmk_shell::refuse(err, files.error().text());
        }
        written = *std::move(files);
    }
    if (options.json) {
        out << answer_document(answer);
    } else if (!options.quiet) {
        out << solution_text(answer, 0);
        nmk_shell::print_written(out, written);
    }
    return nmk_shell::finish(out, err, "the answers", written);
}

int run_solve(const SolveOptions& options, std::ostream& out, std::ostream& err) {
    return options.csv_file.empty() ? solve_one(options, out, err) : solve_table(options, out, err);
}

}  // namespace

nmk_shell::Run declare_solve(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<SolveOptions>(table, declare_solve_options, run_solve);
}

}  // namespace nmk_solve
