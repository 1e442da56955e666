// own_commands: the commands that are about the tool itself: help and completion.

#include "shell/own_commands.h"

#include <algorithm>

#include "shell/command_result.h"
#include "shell/completion.h"
#include "shell/help_text.h"
#include "shell/manual_page.h"
#include "shell/tool_commands.h"

namespace nmk_shell {

namespace {

struct HelpOptions {
    std::string command;  // empty: the tool
    bool as_page = false;
};

using CompletionScript = std::string (*)(std::span<const OptionTable>);

constexpr Choice<CompletionScript> shells[] = {
    {"bash", bash_completion}, {"zsh", zsh_completion}, {"fish", fish_completion}};

std::string help_of(const ToolCommands& commands, const HelpOptions& options) {
    if (options.command.empty()) {
        const OptionTable tool = commands.tool_table();
        return options.as_page ? general_page(tool, commands.terms(), tool_version())
                               : general_help(tool, commands.terms());
    }
    const DeclaredCommand command = commands.declare(options.command);
    return options.as_page ? command_page(command.table, tool_version())
                           : command_help(command.table);
}

void declare_command_name(const ToolCommands& commands, OptionTable& table, HelpOptions& options) {
    const std::vector<std::string> names = commands.names();
    Argument& command = table.positional(
        "COMMAND",
        [&options, names](const std::string& word) {
            options.command = word;
            const bool is_known = std::find(names.begin(), names.end(), word) != names.end();
            return is_known ? Problem() : unknown_choice(word, names);
        },
        "the command; without it the help lists all of them");
    for (const std::string& each : names) {
        command.choices.push_back({each, {}});
    }
}

}  // namespace

Run declare_help(const ToolCommands& commands, OptionTable& table) {
    const auto options = std::make_shared<HelpOptions>();
    table.keep(options);
    declare_command_name(commands, table, *options);
    table.option("--man", options->as_page, "print the manual page, as source for man");
    table.example("nmk help order");
    return [&commands, options](std::ostream& out, std::ostream& err) {
        out << help_of(commands, *options);
        return finish(out, err, "the text");
    };
}

Run declare_completion(const ToolCommands& commands, OptionTable& table) {
    const auto script = std::make_shared<CompletionScript>();
    table.keep(script);
    table.describe(
        "Prints a script that lets the shell complete commands, options and their values. The "
        "Debian package installs all three.");
    table.positional_choice("SHELL", *script, std::span(shells), "the shell").is_required = true;
    table.example("source <(nmk completion bash)");
    table.example("nmk completion fish | source");
    return [&commands, script](std::ostream& out, std::ostream& err) {
        std::vector<OptionTable> tables;
        for (const std::string& name : commands.names()) {
            tables.push_back(commands.declare(name).table);
        }
        out << (*script)(tables);
        return finish(out, err, "the text");
    };
}

}  // namespace nmk_shell
