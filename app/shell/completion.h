// completion.h: scripts that let a shell complete the words of a command line of the tool.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "shell/option_table.h"

namespace nmk_shell {

/// The script for bash, which needs no other one.
std::string bash_completion(std::span<const OptionTable> commands);

/// The script for zsh: a file `_nmk` of a directory in fpath, or to be sourced.
std::string zsh_completion(std::span<const OptionTable> commands);

/// The script for fish.
std::string fish_completion(std::span<const OptionTable> commands);

/// The beginning of a description, up to the first semicolon or colon.
std::string short_text(std::string_view about);

/// The names of the choices, with a blank between them.
std::string choice_words(const Argument& argument);

/// The text in single quotes, for a POSIX shell.
std::string shell_text(std::string_view text);

}  // namespace nmk_shell
