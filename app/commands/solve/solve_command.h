// solve_command.h: `nmk solve KIND NUMBERS`: computes roots, angles and probabilities.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "shell/command.h"

namespace nmk_solve {

/// Runs the command with the arguments that follow its name.
///
///   out      the answers, as text or as JSON: one object, or a list of them for a table
///   err      one line if there is an error
///   returns  0 done (also if there is no solution), 2 bad usage, bad input or an output that
///   cannot
///            be written
///
/// A table is checked as a whole before the first of its rows is solved.
int run_solve(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

/// The text of `nmk help solve`.
std::string solve_help();

inline constexpr nmk_shell::Command solve_command{
    "solve", "solve polynomials, angles and the normal distribution", run_solve, solve_help};

}  // namespace nmk_solve
