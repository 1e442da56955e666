// solve_command: `nmk solve KIND NUMBERS`: computes roots, angles and probabilities.

#include "commands/solve/solve_command.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "commands/solve/polynomial_picture.h"
#include "commands/solve/problem_table.h"
#include "commands/solve/solution_json.h"
#include "commands/solve/solution_table.h"
#include "commands/solve/solution_text.h"
#include "commands/solve/solve_answer.h"
#include "commands/solve/solve_options.h"
#include "files/read_whole_file.h"
#include "files/write_all_files.h"
#include "shell/command_result.h"
#include "shell/standard_output.h"

namespace nmk_solve {

namespace {

/// Prints the answers to a table that was checked, each as soon as it is solved.
nmk_text::Result<void> print_table(const SolveOptions& options, const std::string& text,
                                   std::ostream& out, SolutionTable& table) {
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
            if (!options.table_file.empty()) {
                table.add(answer, line);
            }
            is_first = false;
        });
    if (options.json) {
        out << "]}\n";
    }
    return checked;
}

/// Writes the files, then prints the report.
int write_and_print(const std::vector<nmk_files::OutputFile>& files, const SolveOptions& options,
                    const std::string& report, std::ostream& out, std::ostream& err) {
    const auto written = nmk_shell::write_outputs(files, out);
    if (!written) {
        return nmk_shell::refuse(err, written.error().text());
    }
    std::ostream& stream = nmk_shell::report_stream(files, out, err);
    stream << report;
    if (!options.json && !options.quiet) {
        nmk_shell::print_written(stream, *written);
    }
    return nmk_shell::finish(out, err, "the answers", *written);
}

int solve_table(const SolveOptions& options, std::ostream& out, std::ostream& err) {
    const nmk_text::Result<std::string> read = nmk_files::read_input(options.csv_file);
    if (!read) {
        return nmk_shell::refuse(err, read.error().text());
    }
    const auto& text = *read;
    const std::string name = nmk_files::input_name(options.csv_file);
    if (const auto checked = nmk_files::check_text_file(name, text); !checked) {
        return nmk_shell::refuse(err, checked.error().text());
    }
    const auto ignore = [](const Problem&, std::size_t) {};
    if (const auto checked = read_problem_table(name, text, options.kind, ignore); !checked) {
        return nmk_shell::refuse(err, checked.error().text());
    }
    SolutionTable table;
    if (options.table_file.empty()) {
        const auto printed = print_table(options, text, out, table);
        return printed ? nmk_shell::finish(out, err, "the answers")
                       : nmk_shell::refuse(err, printed.error().text());
    }
    std::ostringstream report;  // is printed once the table is written
    if (const auto printed = print_table(options, text, report, table); !printed) {
        return nmk_shell::refuse(err, printed.error().text());
    }
    return write_and_print({{options.table_file, table.text()}}, options, report.str(), out, err);
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
    std::vector<nmk_files::OutputFile> files;
    if (!options.svg_file.empty()) {
        files.push_back(
            {options.svg_file, polynomial_picture(options.problem.numbers, drawn_part(answer))});
    }
    if (!options.table_file.empty()) {
        SolutionTable table;
        table.add(answer, 0);
        files.push_back({options.table_file, table.text()});
    }
    const std::string report = options.json    ? answer_document(answer)
                               : options.quiet ? std::string()
                                               : solution_text(answer, 0);
    return write_and_print(files, options, report, out, err);
}

int run_solve(const SolveOptions& options, std::ostream& out, std::ostream& err) {
    return options.csv_file.empty() ? solve_one(options, out, err) : solve_table(options, out, err);
}

}  // namespace

nmk_shell::Run declare_solve(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<SolveOptions>(table, declare_solve_options, run_solve);
}

}  // namespace nmk_solve
