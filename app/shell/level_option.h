// level_option.h: the option --level NAME=SETTING, which every command of the tool takes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nmk_shell {

/// Sets one version level of this process.
///
///   text    NAME=previous, NAME=default, NAME=preview or NAME=NUMBER (-1 to the highest setting
///           of the level)
///   error   on failure what was expected, in one line; unchanged on success
///   returns true if the level was set
bool apply_level_option(std::string_view text, std::string& error);

/// The message for a level that does not exist, with similar names if there are any.
std::string unknown_level_message(std::string_view name);

/// Up to five names of levels similar to `name`, the most similar first: names that contain it or
/// are contained in it, and names that differ by a few typing errors. Case is ignored.
std::vector<std::string> similar_level_names(std::string_view name);

}  // namespace nmk_shell
