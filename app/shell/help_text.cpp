// help_text: the help of a command and of the tool, within 80 columns.

#include "shell/help_text.h"

#include <algorithm>

#include "text/similar_names.h"
#include "text/wrapped_text.h"

namespace nmk_shell {

namespace {

constexpr std::size_t indent = 2;
constexpr std::size_t about_column = 22;
constexpr std::size_t choice_indent = 2;      // of a choice with a description, below its option
constexpr std::size_t definition_indent = 6;  // of a definition below its term

/// The term at the left, the text from `about_column` on, beside the term where there is room.
std::string two_columns(const std::string& term, const std::string& text) {
    std::string block = nmk_text::wrapped(text, about_column, help_width);
    const std::string left = std::string(indent, ' ') + term;
    if (left.size() + 2 > about_column) {
        return left + "\n" + block;
    }
    return block.replace(0, left.size(), left);
}

bool are_described(const std::vector<ChoiceText>& choices) {
    return std::any_of(choices.begin(), choices.end(),
                       [](const ChoiceText& choice) { return !choice.about.empty(); });
}

std::string described_choices(const std::vector<ChoiceText>& choices) {
    std::string text;
    for (const ChoiceText& choice : choices) {
        if (!choice.about.empty()) {
            text += nmk_text::wrapped(choice.name + ": " + choice.about,
                                      about_column + choice_indent, help_width);
        }
    }
    return text;
}

std::string argument_block(const std::string& heading, const Argument& argument) {
    return two_columns(heading, option_text(argument)) +
           (are_described(argument.choices) ? described_choices(argument.choices) : "");
}

std::string terms_block(const HelpList& list) {
    std::string text = "\n" + list.heading + ":\n";
    for (const HelpTerm& each : list.terms) {
        text += std::string(indent, ' ') + each.term + "\n" +
                nmk_text::wrapped(each.definition, definition_indent, help_width);
    }
    return list.remark.empty() ? text : text + "\n" + nmk_text::wrapped(list.remark, 0, help_width);
}

std::string paragraphs(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) {
        result += "\n" + nmk_text::wrapped(text, 0, help_width);
    }
    return result;
}

std::string positionals_block(const OptionTable& table) {
    std::string text = table.positionals().empty() ? "" : "\n";
    for (const Argument& positional : table.positionals()) {
        text += argument_block(positional.names + (positional.is_many ? "..." : ""), positional);
    }
    return text;
}

std::string options_block(const OptionTable& table) {
    std::string text;
    for (const std::string& group : table.groups()) {
        text += "\n" + group + ":\n";
        for (const Argument& option : table.options()) {
            if (option.group == group) {
                text += argument_block(option_heading(option), option);
            }
        }
    }
    return text;
}

std::string ending(const OptionTable& table) {
    std::string text = "\nExit codes:\n";
    for (const ExitCode& each : table.exit_codes()) {
        text += two_columns(std::to_string(each.code), each.meaning);
    }
    text += table.examples().size() == 1 ? "\nExample:\n" : "\nExamples:\n";
    for (const std::string& example : table.examples()) {
        text += nmk_text::wrapped_command(example, indent, help_width);
    }
    return text;
}

}  // namespace

std::string usage_line(const OptionTable& table) {
    std::string line = "nmk " + table.command() + " [OPTION]...";
    for (const Argument& positional : table.positionals()) {
        const std::string name = positional.names + (positional.is_many ? "..." : "");
        line += positional.is_required ? " " + name : " [" + name + "]";
    }
    return line;
}

std::string option_heading(const Argument& option) {
    std::string heading;
    for (const std::string& name : option.all_names()) {
        heading += (heading.empty() ? "" : ", ") + name;
    }
    return heading + (option.is_switch() ? "" : " " + option.value);
}

std::string option_text(const Argument& option) {
    std::string text = option.about;
    if (!option.choices.empty() && !are_described(option.choices)) {
        std::vector<std::string> names;
        for (const ChoiceText& choice : option.choices) {
            names.push_back(choice.name);
        }
        text += ": " + nmk_text::list_of(names);
    }
    return option.preset.empty() ? text : text + " (default " + option.preset + ")";
}

std::string command_help(const OptionTable& table) {
    std::string text =
        nmk_text::wrapped("nmk " + table.command() + ": " + table.summary(), 0, help_width) +
        "\nUsage: " + usage_line(table) + "\n" + paragraphs(table.description()) +
        positionals_block(table);
    for (const HelpList& list : table.lists()) {
        text += terms_block(list);
    }
    return text + options_block(table) + paragraphs(table.remarks()) + ending(table);
}

std::string general_help(const OptionTable& tool, std::span<const HelpTerm> commands) {
    std::string text = "nmk: " + tool.summary() + "\n\nUsage: nmk COMMAND ... [OPTION]...\n" +
                       paragraphs(tool.description()) + "\nCommands:\n";
    for (const HelpTerm& command : commands) {
        text += two_columns(command.term, command.definition);
    }
    return text + options_block(tool) + paragraphs(tool.remarks()) + ending(tool);
}

}  // namespace nmk_shell
