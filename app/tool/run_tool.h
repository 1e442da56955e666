// run_tool.h: the command-line tool without its main: picks the command and runs it.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nmk_app {

/// Runs `nmk` with the arguments that follow its name.
///
///   answer  0 done, 1 no result, 2 bad usage or bad input; with 1 and 2 one line is on err
///
/// `--level NAME=VALUE` may stand anywhere and is applied before the command runs.
int run_tool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace nmk_app
