// solve_command.h: `nmk solve KIND NUMBERS`: computes roots, angles and probabilities.
#pragma once

#include "shell/command.h"

namespace nmk_solve {

/// Declares the options; the command prints the solutions, as text or as JSON: one object, or a
/// list of them for a table.
///
/// Its exit code is 0, also if there is no solution; 2 for bad usage, bad input or an output that
/// cannot be written. A table is checked as a whole before the first of its rows is solved.
nmk_shell::Run declare_solve(nmk_shell::OptionTable& table);

inline constexpr nmk_shell::Command solve_command{
    "solve", "solve polynomials, angles and the normal distribution", declare_solve};

}  // namespace nmk_solve
