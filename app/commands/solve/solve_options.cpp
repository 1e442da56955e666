// solve_options: the command line of `nmk solve`.

#include "commands/solve/solve_options.h"

#include "shell/command_options.h"

namespace nmk_solve {

namespace {

using Complaint = std::string;  // empty: none

Complaint set_csv(SolveOptions& options, const std::string& value) {
    if (value.empty()) {
        return "expected the name of a table after --csv";
    }
    options.csv_file = value;
    return {};
}

constexpr nmk_shell::ValueOption<SolveOptions> value_options[] = {
    {"--csv", set_csv},
    {"--svg", nmk_shell::set_output_file<SolveOptions, &SolveOptions::svg_file>},
};

constexpr nmk_shell::SwitchOption<SolveOptions> switches[] = {
    {"--json", &SolveOptions::json},
    {"--quiet", &SolveOptions::quiet},
};

Complaint set_word(SolveOptions& options, const std::string& argument) {
    if (options.kind != nullptr) {
        options.words.push_back(argument);
        return {};
    }
    options.kind = kind_of_name(argument);
    return options.kind != nullptr
               ? ""
               : "unknown kind " + nmk_text::quoted(argument) + "; expected " + kind_list();
}

Complaint check(SolveOptions& options) {
    if (options.csv_file.empty() && options.kind == nullptr) {
        return "expected a kind: " + kind_list() + "; see nmk help solve";
    }
    if (!options.svg_file.empty() &&
        (!options.csv_file.empty() || options.kind->kind != ProblemKind::polynomial)) {
        return "--svg draws one polynomial: nmk solve polynomial C0 C1 ... --svg FILE";
    }
    if (!options.csv_file.empty()) {
        return options.words.empty()
                   ? ""
                   : "numbers are given both as arguments and in --csv; expected one of them";
    }
    const std::vector<std::string_view> words(options.words.begin(), options.words.end());
    auto problem = read_problem(*options.kind, words);
    if (!problem) {
        return problem.error().message;
    }
    options.problem = *std::move(problem);
    return {};
}

constexpr nmk_shell::OptionTable<SolveOptions> table{"solve",  value_options, switches,
                                                     set_word, check,         true};

}  // namespace

nmk_text::Result<SolveOptions> read_solve_options(const std::vector<std::string>& arguments) {
    return nmk_shell::read_options(table, arguments);
}

}  // namespace nmk_solve
