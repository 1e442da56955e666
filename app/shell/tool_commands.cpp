// tool_commands: all commands of the tool: those that main.cpp lists, and its own.

#include "shell/tool_commands.h"

#include <algorithm>

#include "shell/command_result.h"
#include "shell/common_options.h"
#include "shell/own_commands.h"

namespace nmk_shell {

namespace {

/// A command of the tool's own, which knows all the others.
struct OwnCommand {
    std::string_view name;
    std::string_view summary;
    Run (*declare)(const ToolCommands& commands, OptionTable& table);
};

constexpr OwnCommand own_commands[] = {
    {"help", "print the help of a command", declare_help},
    {"completion", "print a script that completes command lines", declare_completion},
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

std::vector<HelpTerm> ToolCommands::terms() const {
    std::vector<HelpTerm> terms;
    for (const Command& command : m_commands) {
        terms.push_back({std::string(command.name), std::string(command.summary)});
    }
    for (const OwnCommand& command : own_commands) {
        terms.push_back({std::string(command.name), std::string(command.summary)});
    }
    return terms;
}

OptionTable ToolCommands::tool_table() const {
    OptionTable table("", "the command-line tool of nmktoolbox");
    table.exit_code(no_result, "no result");
    table.remark("nmk help COMMAND prints the options of a command and an example.");
    declare_common_options(table);
    const DeclaredCommand first = declare(names().front());
    for (const std::string& example : first.table.examples()) {
        table.example(example);
    }
    return table;
}

std::string tool_version() { return NMK_APP_VERSION; }

}  // namespace nmk_shell
