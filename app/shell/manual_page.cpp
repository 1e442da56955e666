// manual_page: the help of a command as a manual page.

#include "shell/manual_page.h"

#include "shell/help_text.h"
#include "text/wrapped_text.h"

namespace nmk_shell {

namespace {

/// Text that the formatter prints as it is: a dash is a dash, and no line begins a request.
std::string roff(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool begins_line = i == 0 || text[i - 1] == '\n';
        if (begins_line && (text[i] == '.' || text[i] == '\'')) {
            result += "\\&";
        }
        switch (text[i]) {
            case '\\':
                result += "\\e";
                break;
            case '-':
                result += "\\-";
                break;
            default:
                result += text[i];
        }
    }
    return result;
}

std::string section(const std::string& heading) { return ".SH " + heading + "\n"; }

std::string term(const std::string& name, const std::string& text) {
    return ".TP\n.B " + roff(name) + "\n" + roff(text) + "\n";
}

std::string paragraphs(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) {
        result += ".PP\n" + roff(text) + "\n";
    }
    return result;
}

/// Lines that are neither filled nor joined.
std::string verbatim(const std::string& text) { return ".nf\n" + roff(text) + ".fi\n"; }

std::string argument_entry(const std::string& heading, const Argument& argument) {
    std::string entry = term(heading, option_text(argument));
    for (const ChoiceText& choice : argument.choices) {
        if (!choice.about.empty()) {
            entry += ".br\n" + roff(choice.name + ": " + choice.about) + "\n";
        }
    }
    return entry;
}

std::string head(const std::string& name, const std::string& summary, const std::string& usage,
                 const std::string& version) {
    return ".TH " + name + " 1 \"\" \"nmktoolbox " + version + "\" \"User Commands\"\n" +
           section("NAME") + roff(name + " - " + summary) + "\n" + section("SYNOPSIS") + ".B " +
           roff(usage) + "\n";
}

std::string options_section(const OptionTable& table) {
    std::string text = section("OPTIONS");
    for (const Argument& positional : table.positionals()) {
        text += argument_entry(positional.names, positional);
    }
    for (const std::string& group : table.groups()) {
        text += ".SS " + group + "\n";
        for (const Argument& option : table.options()) {
            if (option.group == group) {
                text += argument_entry(option_heading(option), option);
            }
        }
    }
    return text;
}

std::string lists_section(const OptionTable& table) {
    std::string text;
    for (const HelpList& list : table.lists()) {
        text += ".SS " + roff(list.heading) + "\n";
        for (const HelpTerm& each : list.terms) {
            text += term(each.term, each.definition);
        }
        text += list.remark.empty() ? "" : ".PP\n" + roff(list.remark) + "\n";
    }
    return text;
}

std::string tail(const OptionTable& table) {
    std::string text = section("EXIT STATUS");
    for (const ExitCode& each : table.exit_codes()) {
        text += term(std::to_string(each.code), each.meaning);
    }
    text += section("EXAMPLES");
    for (const std::string& example : table.examples()) {
        text += ".PP\n" + verbatim(nmk_text::wrapped_command(example, 0, help_width - 10));
    }
    return text;
}

}  // namespace

std::string command_page(const OptionTable& table, const std::string& version) {
    return head("nmk-" + table.command(), table.summary(), usage_line(table), version) +
           section("DESCRIPTION") + paragraphs(table.description()) + paragraphs(table.remarks()) +
           lists_section(table) + options_section(table) + tail(table) + section("SEE ALSO") +
           ".BR nmk (1)\n";
}

std::string general_page(const OptionTable& tool, std::span<const HelpTerm> commands,
                         const std::string& version) {
    std::string text = head("nmk", tool.summary(), "nmk COMMAND ... [OPTION]...", version) +
                       section("DESCRIPTION") + paragraphs(tool.description()) +
                       paragraphs(tool.remarks()) + section("COMMANDS");
    for (const HelpTerm& command : commands) {
        text += term(command.term, command.definition);
    }
    return text + options_section(tool) + tail(tool);
}

}  // namespace nmk_shell
