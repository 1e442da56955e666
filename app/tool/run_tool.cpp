// run_tool: the command-line tool without its main: picks the command and runs it.

#include "tool/run_tool.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "levels/level_option.h"
#include "levels/levels_command.h"
#include "order/order_command.h"
#include "route/route_command.h"
#include "solve/solve_command.h"
#include "tool/command_answer.h"

namespace nmk_app {

namespace {

struct Command {
    std::string_view name;
    std::string_view summary;
    int (*run)(const std::vector<std::string>&, std::ostream& out, std::ostream& err);
    std::string (*help)();
};

constexpr Command commands[] = {
    {"order", "put holes and slots in an order in which the cutter travels little", run_order,
     order_help},
    {"route", "search a short route through a plane with blocked places", run_route, route_help},
    {"solve", "solve polynomials, angles and the normal distribution", run_solve, solve_help},
    {"levels", "list and show the version levels of the library", run_levels, levels_help},
};

const Command* find_command(std::string_view name) {
    const auto* const found = std::find_if(std::begin(commands), std::end(commands),
                                           [&](const Command& c) { return c.name == name; });
    return found == std::end(commands) ? nullptr : found;
}

int refuse_command(std::ostream& err, const std::string& name) {
    return refuse(err, "nmk: there is no command '" + name + "'; nmk help lists the commands");
}

int print(std::ostream& out, std::ostream& err, const std::string& text) {
    out << text;
    return finish(out, err, "the text");
}

std::string general_help() {
    std::string text = "nmk COMMAND ... [--json] [--quiet] [--level NAME=VALUE]\n\nCommands:\n";
    for (const Command& command : commands) {
        const std::string name(command.name);
        text += "  " + name + std::string(10 - name.size(), ' ') + std::string(command.summary);
        text += "\n";
    }
    return text +
           "\nnmk help COMMAND shows its options and an example; nmk --version its version.\n";
}

int help(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.size() < 2) {
        return print(out, err, general_help());
    }
    const Command* const command = find_command(arguments[1]);
    return command == nullptr ? refuse_command(err, arguments[1])
                              : print(out, err, command->help());
}

/// Applies every --level and leaves the other arguments; a problem in one line, or "".
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
    const auto plain = std::find(arguments.begin() + 1, arguments.end(), "--");
    return std::any_of(arguments.begin() + 1, plain,
                       [](const std::string& a) { return a == "--help" || a == "-h"; });
}

int dispatch(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
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
        return help(others, out, err);
    }
    const Command* const command = find_command(others[0]);
    if (command == nullptr) {
        return refuse_command(err, others[0]);
    }
    if (asks_for_help(others)) {
        return print(out, err, command->help());
    }
    return command->run({others.begin() + 1, others.end()}, out, err);
}

}  // namespace

int run_tool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    try {
        return dispatch(arguments, out, err);
    } catch (const std::exception& failure) {
        err << "nmk: no result: " << line_text(failure.what()) << "\n";
        return no_result;
    }
}

}  // namespace nmk_app
