// solve_options.h: the command line of `nmk solve`.
#pragma once

#include <string>
#include <vector>

#include "commands/solve/solve_problem.h"
#include "text/result.h"

namespace nmk_solve {

/// The command line of `nmk solve`, checked.
struct SolveOptions {
    const KindFacts* kind = nullptr;  // null only with a table whose rows name their kinds
    std::vector<std::string> words;   // the arguments after the kind
    Problem problem;                  // of these words, if there is no table
    std::string csv_file;             // the table; empty: none
    std::string svg_file;             // empty: not written
    bool json = false;
    bool quiet = false;
};

/// The options, or an Error.
nmk_text::Result<SolveOptions> read_solve_options(const std::vector<std::string>& arguments);

}  // namespace nmk_solve
