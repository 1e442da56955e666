// tool_commands.h: all commands of the tool: those that main.cpp lists, and its own.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "shell/command.h"

namespace nmk_shell {

/// A command with its options, ready to read arguments.
struct DeclaredCommand {
    OptionTable table;
    Run run;
};

class ToolCommands {
  public:
    /// `commands` in the order in which the help lists them.
    explicit ToolCommands(std::span<const Command> commands) : m_commands(commands) {}

    /// All names, the tool's own commands last.
    std::vector<std::string> names() const;

    bool has(std::string_view name) const;

    /// The command of a name that the tool has.
    DeclaredCommand declare(const std::string& name) const;

    /// All names with their summaries, in the same order.
    std::vector<HelpTerm> terms() const;

    /// The options that are accepted without a command, and the texts of the general help.
    OptionTable tool_table() const;

  private:
    std::span<const Command> m_commands;
};

/// "0.1.0"
std::string tool_version();

}  // namespace nmk_shell
