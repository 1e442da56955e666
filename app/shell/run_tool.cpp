// run_tool: the command-line tool without its main: picks the command and runs it.

#include "shell/run_tool.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "shell/argument_reader.h"
#include "shell/command_result.h"
#include "shell/help_text.h"
#include "shell/tool_commands.h"
#include "text/escaped_text.h"
#include "text/similar_names.h"

namespace nmk_shell {

namespace {

using Arguments = std::vector<std::string>;

int print(std::ostream& out, std::ostream& err, const std::string& text) {
    out << text;
    return finish(out, err, "the text");
}

/// The position of the name of the command: the first argument that is neither an option nor the
/// value of --level.
std::size_t command_position(const Arguments& arguments) {
    std::size_t position = 0;
    while (position < arguments.size() && arguments[position].starts_with('-')) {
        position += arguments[position] == "--level" ? 2 : 1;
    }
    return std::min(position, arguments.size());
}

int refuse_command(const ToolCommands& commands, const std::string& name, std::ostream& err) {
    const std::string similar =
        nmk_text::did_you_mean(nmk_text::similar_names(name, commands.names()));
    return refuse(err, "nmk: unknown command " + nmk_text::quoted(name) +
                           (similar.empty() ? "" : " (" + similar + ")") +
                           "; nmk help lists the commands");
}

/// `words` are the arguments without the name of the command.
int run_command(const ToolCommands& commands, const std::string& name, const Arguments& words,
                std::ostream& out, std::ostream& err) {
    DeclaredCommand command = commands.declare(name);
    if (has_argument(words, {"--help", "-h"})) {
        return print(out, err, command_help(command.table));
    }
    if (has_argument(words, {"--version", "-V"})) {
        return print(out, err, "nmk " + tool_version() + "\n");
    }
    if (const nmk_text::Result<void> read = read_arguments(command.table, words); !read) {
        return refuse(err, "nmk " + name + ": " + read.error().message);
    }
    return command.run(out, err);
}

/// The options alone, such as `nmk --version`.
int run_without_command(const ToolCommands& commands, const Arguments& arguments, std::ostream& out,
                        std::ostream& err) {
    if (arguments.empty() || has_argument(arguments, {"--help", "-h"})) {
        return print(out, err, general_help(commands.tool_table(), commands.terms()));
    }
    if (has_argument(arguments, {"--version", "-V"})) {
        return print(out, err, "nmk " + tool_version() + "\n");
    }
    const nmk_text::Result<void> read = read_arguments(commands.tool_table(), arguments);
    return refuse(
        err, "nmk: " + (read ? "expected a command; nmk help lists them" : read.error().message));
}

int dispatch(const ToolCommands& commands, const Arguments& arguments, std::ostream& out,
             std::ostream& err) {
    const std::size_t position = command_position(arguments);
    if (position == arguments.size()) {
        return run_without_command(commands, arguments, out, err);
    }
    const std::string& name = arguments[position];
    if (!commands.has(name)) {
        return refuse_command(commands, name, err);
    }
    Arguments words = arguments;
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(position));
    return run_command(commands, name, words, out, err);
}

}  // namespace

int run_tool(std::span<const Command> commands, const std::vector<std::string>& arguments,
             std::ostream& out, std::ostream& err) {
    try {
        return dispatch(ToolCommands(commands), arguments, out, err);
    } catch (const std::exception& failure) {
        err << "nmk: no result: " << nmk_text::line_text(failure.what()) << "\n";
        return no_result;
    }
}

}  // namespace nmk_shell
