// run_tool: the command-line tool without its main: picks the command and runs it.

#include "shell/run_tool.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "shell/command_result.h"
#include "shell/level_option.h"

namespace nmk_shell {

namespace {

using Commands = std::span<const Command>;

const Command* find_command(Commands commands, std::string_view name) {
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& c) { return c.name == name; });
    return found == commands.end() ? nullptr : &*found;
}

int refuse_command(std::ostream& err, const std::string& name) {
    return refuse(err, "nmk: unknown command '" + name + "'; nmk help lists the commands");
}

int print(std::ostream& out, std::ostream& err, const std::string& text) {
    out << text;
    return finish(out, err, "the text");
}

std::string general_help(Commands commands) {
    std::string text = "nmk COMMAND ... [--json] [--quiet] [--level NAME=VALUE]\n\nCommands:\n";
    for (const Command& command : commands) {
        const std::string name(command.name);
        text += "  " + name + std::string(10 - name.size(), ' ') + std::string(command.summary);
        text += "\n";
    }
    return text +
           "\nnmk help COMMAND prints its options and an example; nmk --version prints the "
           "version.\n";
}

int help(Commands commands, const std::vector<std::string>& arguments, std::ostream& out,
         std::ostream& err) {
    if (arguments.size() < 2) {
        return print(out, err, general_help(commands));
    }
    const Command* const command = find_command(commands, arguments[1]);
    return command == nullptr ? refuse_command(err, arguments[1])
                              : print(out, err, command->help());
}

/// Applies every --level and collects the other arguments; returns the problem in one line, or "".
std::string apply_levels(const std::vector<std::string>& arguments,
                         std::vector<std::string>& others) {
    constexpr std::string_view option = "--level";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        std::string_view value;
        if (argument == "--") {
            others.insert(others.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i),
                          arguments.end());
            break;
        }
        if (argument == option) {
            if (++i == arguments.size()) {
                return "--level needs a value: NAME=previous, default, preview or a number";
            }
            value = arguments[i];
        } else if (argument.starts_with("--level=")) {
            value = argument.substr(option.size() + 1);
        } else {
            others.emplace_back(argument);
            continue;
        }
        std::string problem;
        if (!apply_level_option(value, problem)) {
            return problem;
        }
    }
    return {};
}

bool asks_for_help(const std::vector<std::string>& arguments) {
    const auto positional = std::find(arguments.begin() + 1, arguments.end(), "--");
    return std::any_of(arguments.begin() + 1, positional,
                       [](const std::string& a) { return a == "--help" || a == "-h"; });
}

int dispatch(Commands commands, const std::vector<std::string>& arguments, std::ostream& out,
             std::ostream& err) {
    std::vector<std::string> others;
    if (const std::string problem = apply_levels(arguments, others); !problem.empty()) {
        return refuse(err, "nmk: " + problem);
    }
    if (others.empty()) {
        return refuse(err, "nmk: expected a command; nmk help lists them");
    }
    if (others[0] == "--version") {
        return print(out, err, "nmk " NMK_APP_VERSION "\n");
    }
    if (others[0] == "help" || others[0] == "--help" || others[0] == "-h") {
        return help(commands, others, out, err);
    }
    const Command* const command = find_command(commands, others[0]);
    if (command == nullptr) {
        return refuse_command(err, others[0]);
    }
    if (asks_for_help(others)) {
        return print(out, err, command->help());
    }
    return command->run({others.begin() + 1, others.end()}, out, err);
}

}  // namespace

int run_tool(std::span<const Command> commands, const std::vector<std::string>& arguments,
             std::ostream& out, std::ostream& err) {
    try {
        return dispatch(commands, arguments, out, err);
    } catch (const std::exception& failure) {
        err << "nmk: no result: " << nmk_text::line_text(failure.what()) << "\n";
        return no_result;
    }
}

}  // namespace nmk_shell
