// level_option.h: the option --level NAME=SETTING, which every command of the tool takes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nmk_shell {

/// Moves one version level of this process.
///
///   text    NAME=previous, NAME=default, NAME=preview or NAME=NUMBER (0 to 2147483647, or -1)
///   error   on failure one line that says what was wrong; else untouched
///   answer  true when the level was moved
bool apply_level_option(std::string_view text, std::string& error);

/// The sentence for a level that does not exist; lists the names that come near, where there are
/// any.
std::string unknown_level_message(std::string_view name);

/// Names of levels like `name`, the likeliest first, five at most: those that hold it or are held
/// by it, and those that a few typing errors lead to. Case does not count.
std::vector<std::string> near_level_names(std::string_view name);

}  // namespace nmk_shell
