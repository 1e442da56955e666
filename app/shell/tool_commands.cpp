// tool_commands: all commands of the tool: those that main.cpp lists, and help.

#include "shell/tool_commands.h"

#include <algorithm>

#include "shell/command_result.h"
#include "shell/common_options.h"
#include "shell/help_text.h"

namespace nmk_shell {

namespace {

/// A command of the tool's own, which knows all the others.
struct OwnCommand {
    std::string_view name;
    std::string_view summary;
    Run (*declare)(const ToolCommands& commands, OptionTable& table);
};

Run declare_help(const ToolCommands& commands, OptionTable& table) {
    const auto name = std::make_shared<std::string>();
    table.keep(name);
    const std::vector<std::string> names = commands.names();
    Argument& command = table.positional(
        "COMMAND",
        [name, names](const std::string& word) {
            *name = word;
            const bool is_known = std::find(names.begin(), names.end(), word) != names.end();
            return is_known ? Problem() : unknown_choice(word, names);
        },
        "print the help of this command; without it, the list of commands");
    for (const std::string& each : names) {
        command.choices.push_back({each, {}});
    }
    table.example("nmk help order");
    return [&commands, name](std::ostream& out, std::ostream& err) {
        out << (name->empty() ? commands.help() : command_help(commands.declare(*name).table));
        return finish(out, err, "the text");
    };
}

constexpr OwnCommand own_commands[] = {
    {"help", "print the help of a command", declare_help},
};

}  // namespace

std::vector<std::string> ToolCommands::names() const {
    std::vector<std::string> result;
    for (const Command& command : m_commands) {
        result.emplace_back(command.name);
    }
    for (const OwnCommand& command : own_commands) {
        result.emplace_back(command.name);
    }
    return result;
}

bool ToolCommands::has(std::string_view name) const {
    const std::vector<std::string> known = names();
    return std::find(known.begin(), known.end(), name) != known.end();
}

DeclaredCommand ToolCommands::declare(const std::string& name) const {
    for (const Command& command : m_commands) {
        if (command.name == name) {
            OptionTable table(command.name, command.summary);
            Run run = command.declare(table);
            declare_common_options(table);
            return {std::move(table), std::move(run)};
        }
    }
    const auto* const own =
        std::find_if(std::begin(own_commands), std::end(own_commands),
                     [&](const OwnCommand& command) { return command.name == name; });
    OptionTable table(own->name, own->summary);
    Run run = own->declare(*this, table);
    declare_common_options(table);
    return {std::move(table), std::move(run)};
}

std::string ToolCommands::help() const {
    std::vector<HelpTerm> terms;
    for (const Command& command : m_commands) {
        terms.push_back({std::string(command.name), std::string(command.summary)});
    }
    for (const OwnCommand& command : own_commands) {
        terms.push_back({std::string(command.name), std::string(command.summary)});
    }
    OptionTable table = tool_table();
    const DeclaredCommand first = declare(names().front());
    for (const std::string& example : first.table.examples()) {
        table.example(example);
    }
    return general_help(table, terms);
}

OptionTable ToolCommands::tool_table() const {
    OptionTable table("", "the command-line tool of nmktoolbox");
    table.exit_code(no_result, "no result");
    table.remark("nmk help COMMAND prints the options of a command and an example.");
    declare_common_options(table);
    return table;
}

std::string tool_version() { return "nmk " NMK_APP_VERSION "\n"; }

}  // namespace nmk_shell
