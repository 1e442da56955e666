// argument_reader.h: reads the arguments of a command as its option table declares them.
//
// An option with a value is `--name value`, `--name=value` or `-n value`. After `--` every argument
// is positional, and so is a negative number everywhere: `-1`, `-.5`, `-inf`.
#pragma once

#include <string>
#include <vector>

#include "shell/option_table.h"
#include "text/result.h"

namespace nmk_shell {

/// Calls the setters of the table, then its rules. Returns the first problem as an Error; the
/// setters of some arguments have been called then.
nmk_text::Result<void> read_arguments(const OptionTable& table,
                                      const std::vector<std::string>& arguments);

/// True if one of the names is an argument before `--`.
bool has_argument(const std::vector<std::string>& arguments, const std::vector<std::string>& names);

}  // namespace nmk_shell
