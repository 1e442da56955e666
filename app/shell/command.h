// command.h: one command of the tool, as main.cpp lists it.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "shell/argument_reader.h"
#include "shell/option_table.h"
#include "text/result.h"

namespace nmk_shell {

/// Runs a command whose arguments have been read; returns the exit code.
using Run = std::function<int(std::ostream& out, std::ostream& err)>;

struct Command {
    std::string_view name;
    std::string_view summary;  // one line for the general help

    /// Declares the options of the command, and returns what runs it with them.
    Run (*declare)(OptionTable& table);
};

/// Declares options that are members of a struct, and runs a command with that struct.
template <class Options>
Run declare_command(OptionTable& table, void (*declare)(OptionTable&, Options&),
                    int (*run)(const Options&, std::ostream& out, std::ostream& err)) {
    const auto options = std::make_shared<Options>();
    table.keep(options);
    declare(table, *options);
    return [options, run](std::ostream& out, std::ostream& err) { return run(*options, out, err); };
}

/// The options of these arguments, or the first problem as an Error. Messages name `command`.
template <class Options>
nmk_text::Result<Options> read_options(void (*declare)(OptionTable&, Options&),
                                       const std::vector<std::string>& arguments,
                                       std::string_view command = {}) {
    Options options;
    OptionTable table(command, {});
    declare(table, options);
    if (const nmk_text::Result<void> read = read_arguments(table, arguments); !read) {
        return read.error();
    }
    return options;
}

}  // namespace nmk_shell
