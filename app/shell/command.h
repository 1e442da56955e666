// command.h: one command of the tool, as main.cpp lists it.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_shell {

struct Command {
    std::string_view name;
    std::string_view summary;  // one line for the general help

    /// Runs with the arguments that follow the name; returns the exit code.
    int (*run)(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

    /// The text of `nmk help NAME`.
    std::string (*help)();
};

}  // namespace nmk_shell
