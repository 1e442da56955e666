// completion_bash: the completion script for bash.

#include "shell/completion.h"

namespace nmk_shell {

namespace {

constexpr std::string_view script_begin = R"(# bash completion of nmk; made by nmk completion bash

_nmk() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' words='' files='' word i
    COMPREPLY=()
    # Bash splits --type=clo into three words.
    if [[ $current == '=' ]]; then
        current=''
    elif [[ $previous == '=' ]] && ((COMP_CWORD > 1)); then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            --level) ((++i)); [[ ${COMP_WORDS[i]} == '=' ]] && ((++i)) ;;
            -*) ;;
            *) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    case $command,$previous in
)";

constexpr std::string_view script_end = R"(    esac
    # shellcheck disable=SC2207  # none of the words has a blank
    COMPREPLY=($(compgen -W "$words" -- "$current"))
    if [[ $files ]]; then
        compopt -o filenames 2>/dev/null
        while IFS= read -r word; do
            COMPREPLY+=("$word")
        done < <(compgen -f -- "$current")
    fi
}

complete -F _nmk nmk
)";

/// The assignments that propose the values of an argument.
std::string proposals(const Argument& argument) {
    std::string text;
    if (!argument.choices.empty()) {
        text += " words=" + shell_text(choice_words(argument));
    }
    return argument.completes == Completes::files ? text + " files=1" : text;
}

/// One line for each option with a value: what follows it.
std::string value_cases(const OptionTable& table) {
    std::string text;
    for (const Argument& option : table.options()) {
        if (option.is_switch()) {
            continue;
        }
        std::string pattern;
        for (const std::string& name : option.all_names()) {
            pattern += (pattern.empty() ? "" : " | ") + table.command() + "," + name;
        }
        text += "        " + pattern + ")" + proposals(option) + " ;;\n";
    }
    return text;
}

std::string option_names(const OptionTable& table) {
    std::string names;
    for (const Argument& option : table.options()) {
        names += (names.empty() ? "" : " ") + option.long_name();
    }
    return names;
}

/// The line for any other place: an option, or a positional argument.
std::string other_case(const OptionTable& table) {
    std::string text = "        " + table.command() + ",*)\n            if [[ $current == -* ]]; " +
                       "then\n                words=" + shell_text(option_names(table)) + "\n";
    std::string positionals;
    for (const Argument& positional : table.positionals()) {
        positionals += proposals(positional);
    }
    if (!positionals.empty()) {
        text += "            else\n               " + positionals + "\n";
    }
    return text + "            fi\n            ;;\n";
}

}  // namespace

std::string bash_completion(std::span<const OptionTable> commands) {
    std::string text(script_begin);
    std::string names;
    for (const OptionTable& table : commands) {
        text += value_cases(table) + other_case(table);
        names += table.command() + " ";
    }
    text +=
        "        ,--level) ;;\n        *) words=" + shell_text(names + "--help --version --level") +
        " ;;\n";
    return text + std::string(script_end);
}

}  // namespace nmk_shell
