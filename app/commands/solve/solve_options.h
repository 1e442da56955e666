// solve_options.h: the command line of `nmk solve`.
#pragma once

#include <string>
#include <vector>

#include "commands/solve/solve_problem.h"
#include "shell/option_table.h"

namespace nmk_solve {

/// The command line of `nmk solve`, checked.
struct SolveOptions {
    const KindFacts* kind = nullptr;  // null only with a table whose rows name their kinds
    std::vector<std::string> words;   // the arguments after the kind
    Problem problem;                  // of these words, if there is no table
    std::string csv_file;             // the table; empty: none
    std::string svg_file;             // empty: not written
    bool certified = false;           // prove the real roots of polynomials
    std::string table_file;           // the answers as CSV; empty: not written
    bool json = false;
    bool quiet = false;
};

/// Declares the options, which are read into `options`.
void declare_solve_options(nmk_shell::OptionTable& table, SolveOptions& options);

}  // namespace nmk_solve
