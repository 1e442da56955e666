// command_options.h: reads the arguments of a command from tables of its options.
//
// An option with a value is `--name value` or `--name=value`; a switch is a name alone; after `--`
// every argument is positional. A command keeps its options in a struct of its own, and two tables
// list how each of them is set. A problem is one line of text; an empty text means that there is
// none.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/same_file.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"
#include "text/result.h"

namespace nmk_shell {

template <class Options>
struct ValueOption {
    std::string_view name;
    std::string (*set)(Options&, const std::string& value);
};

template <class Options>
struct SwitchOption {
    std::string_view name;
    bool Options::*flag;
};

/// The arguments of a command.
template <class Options>
struct OptionTable {
    std::string_view command;  // for messages
    std::span<const ValueOption<Options>> values;
    std::span<const SwitchOption<Options>> switches;
    std::string (*set_positional)(Options&, const std::string& argument);
    std::string (*check)(Options&);  // of all arguments, after the last one
    bool takes_numbers = false;      // -3 is then a positional argument
};

/// Sets the name of a file to write.
template <class Options, std::string Options::*file>
std::string set_output_file(Options& options, const std::string& value) {
    if (value.empty()) {
        return "expected the name of a file to write";
    }
    options.*file = value;
    return {};
}

/// Sets the name of the one file to read from a positional argument.
template <class Options>
std::string set_file_name(Options& options, const std::string& argument) {
    if (!options.file_name.empty()) {
        return "expected one file; found " + nmk_text::quoted(options.file_name) + " and " +
               nmk_text::quoted(argument);
    }
    if (argument.empty()) {
        return "the name of the file is empty";
    }
    options.file_name = argument;
    return {};
}

/// Reads the option at `i`, and its value if it has one.
template <class Options>
std::string read_option(Options& options, const OptionTable<Options>& table,
                        const std::vector<std::string>& arguments, std::size_t& i) {
    const std::string& argument = arguments[i];
    for (const SwitchOption<Options>& known : table.switches) {
        if (argument == known.name) {
            options.*known.flag = true;
            return {};
        }
    }
    const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
    const std::string name = argument.substr(0, equals);
    for (const ValueOption<Options>& known : table.values) {
        if (name != known.name) {
            continue;
        }
        if (equals != std::string::npos) {
            return known.set(options, argument.substr(equals + 1));
        }
        if (i + 1 == arguments.size()) {
            return name + " needs a value";
        }
        return known.set(options, arguments[++i]);
    }
    return "unknown option " + nmk_text::quoted(argument) + "; see nmk help " +
           std::string(table.command);
}

/// True for "-3", and for "-1e999", which is too large for a number but is not an option either.
inline bool begins_negative_number(const std::string& argument) {
    return nmk_text::read_number(argument) || argument.find_first_of("0123456789.") == 1;
}

/// Reads all arguments in their order and checks them; returns the first problem as an Error.
template <class Options>
nmk_text::Result<Options> read_options(const OptionTable<Options>& table,
                                       const std::vector<std::string>& arguments) {
    Options options;
    bool only_positional = false;  // after "--"
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!only_positional && argument == "--") {
            only_positional = true;
            continue;
        }
        const bool is_number = table.takes_numbers && begins_negative_number(argument);
        const bool is_option = !only_positional && argument.starts_with('-') && !is_number;
        std::string problem = is_option ? read_option(options, table, arguments, i)
                                        : table.set_positional(options, argument);
        if (!problem.empty()) {
            return nmk_text::Error{{}, 0, std::move(problem)};
        }
    }
    if (std::string problem = table.check(options); !problem.empty()) {
        return nmk_text::Error{{}, 0, std::move(problem)};
    }
    return options;
}

/// A problem if two of the names that are not empty are one file.
inline std::string check_outputs_differ(std::span<const std::string_view> names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (!names[i].empty() && !names[j].empty() &&
                nmk_files::is_same_file(names[i], names[j])) {
                return nmk_text::quoted(names[i]) +
                       " is the name of two outputs; expected different files";
            }
        }
    }
    return {};
}

/// A problem if one of the names that are not empty is the input file.
inline std::string check_input_is_kept(std::string_view input,
                                       std::span<const std::string_view> names) {
    for (const std::string_view name : names) {
        if (!name.empty() && nmk_files::is_same_file(input, name)) {
            return nmk_text::quoted(name) +
                   " is the input file; expected another name for the output";
        }
    }
    return {};
}

}  // namespace nmk_shell
