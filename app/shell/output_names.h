// output_names.h: checks of the names of files to write, before any work is done.
#pragma once

#include <span>
#include <string_view>

#include "shell/option_values.h"

namespace nmk_shell {

/// A problem if two of the names that are not empty are one file.
Problem check_outputs_differ(std::span<const std::string_view> names);

/// A problem if one of the names that are not empty is the input file.
Problem check_input_is_kept(std::string_view input, std::span<const std::string_view> names);

}  // namespace nmk_shell
