// completion_zsh: the completion script for zsh.

#include "shell/completion.h"

namespace nmk_shell {

namespace {

/// The text with a backslash before each character that _arguments gives a meaning to.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        if (letter == '[' || letter == ']' || letter == ':' || letter == '\\') {
            result += '\\';
        }
        result += letter;
    }
    return result;
}

/// ":NAME:(a b)", what follows an option or is a positional argument.
std::string value_of(const std::string& name, const Argument& argument) {
    std::string text = ":" + escaped(name) + ":";
    if (!argument.choices.empty()) {
        text += "(" + choice_words(argument) + ")";
    } else if (argument.completes == Completes::files) {
        text += "_files";
    }
    return text;
}

std::string option_lines(const Argument& option) {
    std::string lines;
    for (const std::string& name : option.all_names()) {
        const bool is_long = name.starts_with("--");
        lines += " \\\n                " +
                 shell_text("*" + name +
                            (option.is_switch() ? ""
                             : is_long          ? "="
                                                : "+") +
                            "[" + escaped(short_text(option.about)) + "]" +
                            (option.is_switch() ? "" : value_of(option.value, option)));
    }
    return lines;
}

std::string command_case(const OptionTable& table) {
    std::string text = "        " + table.command() + ")\n            _arguments";
    for (const Argument& option : table.options()) {
        text += option_lines(option);
    }
    std::size_t position = 0;
    for (const Argument& positional : table.positionals()) {
        ++position;
        text += " \\\n                " +
                shell_text((positional.is_many ? "*" : std::to_string(position)) +
                           value_of(positional.names, positional));
    }
    return text + "\n            ;;\n";
}

}  // namespace

std::string zsh_completion(std::span<const OptionTable> commands) {
    std::string names;
    std::string cases;
    for (const OptionTable& table : commands) {
        names += "        " + shell_text(table.command() + ":" + escaped(table.summary())) + "\n";
        cases += command_case(table);
    }
    return "#compdef nmk\n# zsh completion of nmk; made by nmk completion zsh\n\n_nmk() {\n"
           "    local curcontext=$curcontext state line\n    typeset -A opt_args\n"
           "    local -a commands=(\n" +
           names +
           "    )\n    _arguments -C '(-h --help)'{-h,--help}'[print the help]' \\\n"
           "        '(-V --version)'{-V,--version}'[print the version]' \\\n"
           "        '*--level=[set a version level]:NAME=VALUE:' \\\n"
           "        '1: :->command' '*:: :->arguments'\n"
           "    if [[ $state == command ]]; then\n        _describe command commands\n"
           "        return\n    fi\n    case $line[1] in\n" +
           cases +
           "    esac\n}\n\nif [[ ${funcstack[1]} == _nmk ]]; then\n    _nmk \"$@\"\nelse\n"
           "    compdef _nmk nmk\nfi\n";
}

}  // namespace nmk_shell
