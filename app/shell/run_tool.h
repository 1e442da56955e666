// run_tool.h: the command-line tool without its main: picks the command and runs it.
#pragma once

#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "shell/command.h"

namespace nmk_shell {

/// Runs `nmk` with the arguments that follow its name.
///
///   commands  in the order in which the help lists them
///   returns   0 done, 1 no result, 2 bad usage or bad input; with 1 and 2 one line is printed to
///   err
///
/// `--level NAME=VALUE` may be given at any position and is applied before the command runs.
int run_tool(std::span<const Command> commands, const std::vector<std::string>& arguments,
             std::ostream& out, std::ostream& err);

}  // namespace nmk_shell
