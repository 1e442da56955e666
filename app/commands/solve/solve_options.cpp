// solve_options: the command line of `nmk solve`.

#include "commands/solve/solve_options.h"

#include <span>
#include <string_view>
#include <vector>

#include "shell/command_result.h"
#include "shell/output_names.h"

namespace nmk_solve {

namespace {

nmk_shell::Problem csv_problem(const SolveOptions& options) {
    if (!options.words.empty()) {
        return "numbers are given both as arguments and in --csv; expected one of them";
    }
    const std::string_view outputs[] = {options.table_file};
    return nmk_shell::check_input_is_kept(options.csv_file, outputs);
}

nmk_shell::Problem check(SolveOptions& options) {
    if (options.csv_file.empty() && options.kind == nullptr) {
        return "expected a KIND: " + kind_list() + "; see nmk help solve";
    }
    if (!options.svg_file.empty() &&
        (!options.csv_file.empty() || options.kind->kind != ProblemKind::polynomial)) {
        return "--svg draws one polynomial: nmk solve polynomial C0 C1 ... --svg FILE";
    }
    if (options.certified &&
        (options.kind == nullptr || options.kind->kind != ProblemKind::polynomial)) {
        return "--certified proves the roots of polynomials: nmk solve polynomial ... --certified";
    }
    if (!options.csv_file.empty()) {
        return csv_problem(options);
    }
    const std::string_view outputs[] = {options.svg_file, options.table_file};
    if (nmk_shell::Problem repeated = nmk_shell::check_outputs_differ(outputs); !repeated.empty()) {
        return repeated;
    }
    const std::vector<std::string_view> words(options.words.begin(), options.words.end());
    auto problem = read_problem(*options.kind, words);
    if (!problem) {
        return problem.error().message;
    }
    options.problem = *std::move(problem);
    options.problem.certified = options.certified;
    return {};
}

nmk_shell::HelpList kinds_with(bool has_two_angles, nmk_shell::HelpList list) {
    for (const KindFacts& kind : problem_kinds()) {
        if (kind.has_two_angles == has_two_angles) {
            list.terms.push_back({std::string(kind.name) + " " + std::string(kind.letters),
                                  std::string(kind.about)});
        }
    }
    return list;
}

}  // namespace

void declare_solve_options(nmk_shell::OptionTable& table, SolveOptions& options) {
    table.describe(
        "Solves with the solvers of the library and prints each solution with its residuals.");
    table.positional_choice("KIND", options.kind, kind_choices(), "what to solve, as listed below");
    table
        .positional(
            "NUMBER",
            [&options](const std::string& word) {
                options.words.push_back(word);
                return nmk_shell::Problem();
            },
            "the numbers of the kind; may be negative")
        .is_many = true;
    table.list(kinds_with(false, {"Kinds and their numbers", {}, {}}));
    table.list(kinds_with(true, {"Kinds with two angles",
                                 {},
                                 "psi is free, phi goes from 0 to 90 degrees, and R = H + K sin "
                                 "phi is not negative."}));
    table.group("Options");
    table
        .option("--csv", "FILE", nmk_shell::file_setter(options.csv_file),
                "solve a table: rows KIND,NUMBERS, or rows NUMBERS if KIND is an argument; - is "
                "standard input")
        .completes = nmk_shell::Completes::files;
    table.output_file("--svg", options.svg_file, "draw the polynomial and its roots");
    table.option("--certified", options.certified,
                 "real roots of polynomials, each with a bracket that is proved to hold it and "
                 "with its multiplicity");
    table.output_file("-o,--output", options.table_file,
                      "the answers as a CSV table, a row for each solution; - is standard output");
    table.option("--json", options.json, "print JSON instead of the text");
    table.option("--quiet", options.quiet, "print no text; --json still prints");
    table.check([&options] { return check(options); });
    table.exit_code(nmk_shell::done, "done, also if there is no solution");
    table.example("nmk solve polynomial 1 -3 2 --svg roots.svg");
    table.example("nmk solve angles4 1 0.5 0.3 0.4 1 2");
    table.example("nmk solve --csv samples/problems.csv --json");
    table.example("nmk solve --csv samples/problems.csv -o - --quiet");
}

}  // namespace nmk_solve
