// command.h: what the tool knows of each of its commands.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_shell {

/// One command; each declares its own, and main.cpp lists them.
struct Command {
    std::string_view name;
    std::string_view summary;  // one line for the general help

    /// Runs with the arguments that follow the name; returns the exit code.
    int (*run)(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

    /// What `nmk help NAME` prints.
    std::string (*help)();
};

}  // namespace nmk_shell
