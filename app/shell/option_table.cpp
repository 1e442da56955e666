// option_table: what a command declares of its command line.

#include "shell/option_table.h"

#include <algorithm>

#include "shell/command_result.h"

namespace nmk_shell {

std::vector<std::string> Argument::all_names() const {
    std::vector<std::string> result;
    for (std::size_t begin = 0; begin <= names.size();) {
        const std::size_t end = std::min(names.find(',', begin), names.size());
        result.push_back(names.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

OptionTable::OptionTable(std::string_view command, std::string_view summary)
    : m_command(command),
      m_summary(summary),
      m_exit_codes{{done, "done"},
                   {bad_input,
                    "bad usage, bad input, or an output that cannot be written; one line on "
                    "standard error names the problem"}} {}

void OptionTable::exit_code(int code, std::string_view meaning) {
    const auto at = std::find_if(m_exit_codes.begin(), m_exit_codes.end(),
                                 [&](const ExitCode& each) { return each.code >= code; });
    if (at != m_exit_codes.end() && at->code == code) {
        at->meaning = meaning;
    } else {
        m_exit_codes.insert(at, {code, std::string(meaning)});
    }
}

Argument& OptionTable::option(std::string names, std::string value, Setter set, std::string about) {
    return m_options.emplace_back(
        Argument{std::move(names), std::move(value), std::move(about), std::move(set), m_group});
}

Argument& OptionTable::repeated_option(std::string names, std::string value, Setter set,
                                       std::string about) {
    Argument& added = option(std::move(names), std::move(value), std::move(set), std::move(about));
    added.is_many = true;
    return added;
}

Argument& OptionTable::ordered_option(std::string names, std::string value, Setter set,
                                      std::string about) {
    Argument& added =
        repeated_option(std::move(names), std::move(value), std::move(set), std::move(about));
    added.is_ordered = true;
    return added;
}

Argument& OptionTable::option(std::string names, bool& flag, std::string about) {
    return option(
        std::move(names), std::string(),
        [&flag](const std::string&) {
            flag = true;
            return Problem();
        },
        std::move(about));
}

Argument& OptionTable::output_file(std::string names, std::string& file_name, std::string about) {
    Argument& added = option(std::move(names), "FILE", file_setter(file_name), std::move(about));
    added.completes = Completes::files;
    return added;
}

Argument& OptionTable::positional(std::string name, Setter set, std::string about) {
    return m_positionals.emplace_back(
        Argument{std::move(name), std::string(), std::move(about), std::move(set)});
}

Argument& OptionTable::input_file(std::string name, std::string& file_name, std::string about) {
    Argument& added = positional(std::move(name), file_setter(file_name), std::move(about));
    added.completes = Completes::files;
    added.is_required = true;
    return added;
}

Argument& OptionTable::input_files(std::string name, std::vector<std::string>& file_names,
                                   std::string about) {
    Argument& added = positional(
        std::move(name),
        [&file_names](const std::string& text) {
            return file_setter(file_names.emplace_back())(text);
        },
        std::move(about));
    added.completes = Completes::files;
    added.is_required = true;
    added.is_many = true;
    return added;
}

std::vector<std::string> OptionTable::groups() const {
    std::vector<std::string> result;
    for (const Argument& option : m_options) {
        if (std::find(result.begin(), result.end(), option.group) == result.end()) {
            result.push_back(option.group);
        }
    }
    return result;
}

}  // namespace nmk_shell
