// completion_fish: the completion script for fish.

#include "shell/completion.h"

namespace nmk_shell {

namespace {

/// The text in single quotes, in which fish gives a meaning to backslashes.
std::string fish_text(std::string_view text) {
    std::string result = "'";
    for (const char letter : text) {
        if (letter == '\'' || letter == '\\') {
            result += '\\';
        }
        result += letter;
    }
    return result + "'";
}

std::string within(const OptionTable& table) {
    return "complete -c nmk -n " + fish_text("__fish_seen_subcommand_from " + table.command());
}

std::string proposals(const Argument& argument) {
    if (!argument.choices.empty()) {
        return " -x -a " + fish_text(choice_words(argument));
    }
    return argument.completes == Completes::files ? " -r -F" : " -x";
}

std::string option_line(const OptionTable& table, const Argument& option) {
    std::string line = within(table);
    for (const std::string& name : option.all_names()) {
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return line + (option.is_switch() ? "" : proposals(option)) + " -d " +
           fish_text(short_text(option.about)) + "\n";
}

std::string positional_line(const OptionTable& table, const Argument& positional) {
    if (!positional.choices.empty()) {
        return within(table) + " -f -a " + fish_text(choice_words(positional)) + "\n";
    }
    return positional.completes == Completes::files ? within(table) + " -F\n" : "";
}

}  // namespace

std::string fish_completion(std::span<const OptionTable> commands) {
    std::string text =
        "# fish completion of nmk; made by nmk completion fish\n\ncomplete -c nmk -f\n";
    for (const OptionTable& table : commands) {
        text += "complete -c nmk -n __fish_use_subcommand -a " + table.command() + " -d " +
                fish_text(table.summary()) + "\n";
    }
    for (const OptionTable& table : commands) {
        for (const Argument& positional : table.positionals()) {
            text += positional_line(table, positional);
        }
        for (const Argument& option : table.options()) {
            text += option_line(table, option);
        }
    }
    return text;
}

}  // namespace nmk_shell
