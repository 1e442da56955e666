// option_table.h: what a command declares of its command line.
//
// One function of a command fills an OptionTable. The arguments are read by it
// (argument_reader.h), and the help, the manual page and the completion of shells are made from it.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "shell/option_values.h"

namespace nmk_shell {

/// A word that an option or a positional argument accepts, with a description that may be empty.
struct ChoiceText {
    std::string name;
    std::string about;
};

/// What shells complete an argument with.
enum class Completes { nothing, files };

/// An option, or a positional argument.
struct Argument {
    std::string names;  // "-o,--output"; "FILE" for a positional argument
    std::string value;  // of an option, as the help names it: "OUT"; empty for a switch
    std::string about;  // a description without a full stop
    std::function<Problem(const std::string&)> set = {};
    std::string group = {};                    // heading of the help under which it is listed
    std::vector<ChoiceText> choices = {};      // the only values, if there are any
    std::string preset = {};                   // the value without the option; empty: none
    Completes completes = Completes::nothing;  // beside the choices
    bool is_required = false;
    bool is_many = false;  // an option that may be repeated; a positional one that takes all left
    bool is_ordered = false;  // set in the order of the command line, with the others that are

    bool is_switch() const { return value.empty(); }

    /// "--output" of "-o,--output".
    std::string long_name() const { return names.substr(names.find(',') + 1); }

    /// All names, "-o" and "--output".
    std::vector<std::string> all_names() const;
};

/// A term of the help and its definition, in a list of its own.
struct HelpTerm {
    std::string term;
    std::string definition;
};

struct HelpList {
    std::string heading;
    std::vector<HelpTerm> terms;
    std::string remark;  // a paragraph below
};

struct ExitCode {
    int code;
    std::string meaning;
};

class OptionTable {
  public:
    OptionTable(std::string_view command, std::string_view summary);

    // The texts of the help.

    /// A paragraph below the usage.
    void describe(std::string_view paragraph) { m_description.emplace_back(paragraph); }

    /// A paragraph below the options.
    void remark(std::string_view paragraph) { m_remarks.emplace_back(paragraph); }

    void list(HelpList terms) { m_lists.push_back(std::move(terms)); }

    /// What an exit code means. 0 and 2 have a meaning that is common to all commands.
    void exit_code(int code, std::string_view meaning);

    /// A command line that works in the directory of the project.
    void example(std::string_view line) { m_examples.emplace_back(line); }

    // Options. They are listed under the last heading.

    void group(std::string_view heading) { m_group = heading; }

    /// An option with a value; `set` reads it. The last of several values counts.
    Argument& option(std::string names, std::string value, Setter set, std::string about);

    /// An option with a value that may be given several times; `set` is called for each.
    Argument& repeated_option(std::string names, std::string value, Setter set, std::string about);

    /// The same for options that belong to what precedes them: the values of all ordered options of
    /// a command are set in their order on the command line, after those of the other options.
    Argument& ordered_option(std::string names, std::string value, Setter set, std::string about);

    /// A switch without a value.
    Argument& option(std::string names, bool& flag, std::string about);

    /// An option with one of several words as its value.
    template <class Target, class Value, std::size_t extent>
    Argument& choice(std::string names, std::string value, Target& target,
                     std::span<const Choice<Value>, extent> choices, std::string about) {
        Argument& added = option(std::move(names), std::move(value),
                                 choice_setter<Target, Value>(target, choices), std::move(about));
        added.preset = name_of_choice<Target, Value>(target, choices);
        return with_choices<Value>(added, choices);
    }

    /// An option for a number of this range.
    template <class Target>
    Argument& number(std::string names, std::string value, Target& target, NumberRange range,
                     std::string about) {
        Argument& added = option(std::move(names), std::move(value), number_setter(target, range),
                                 std::move(about));
        added.preset = number_text(target);
        return added;
    }

    /// An option for the name of a file to write.
    Argument& output_file(std::string names, std::string& file_name, std::string about);

    // Positional arguments, in their order.

    Argument& positional(std::string name, Setter set, std::string about);

    /// The name of a file to read.
    Argument& input_file(std::string name, std::string& file_name, std::string about);

    /// The names of one file or more to read; all positional arguments that follow.
    Argument& input_files(std::string name, std::vector<std::string>& file_names,
                          std::string about);

    /// A positional argument that is one of several words.
    template <class Target, class Value, std::size_t extent>
    Argument& positional_choice(std::string name, Target& target,
                                std::span<const Choice<Value>, extent> choices, std::string about) {
        return with_choices<Value>(
            positional(std::move(name), choice_setter<Target, Value>(target, choices),
                       std::move(about)),
            choices);
    }

    // Rules about several arguments together.

    /// `rule` is called when all arguments have been read; the first problem is reported.
    void check(std::function<Problem()> rule) { m_rules.push_back(std::move(rule)); }

    /// Keeps what the setters refer to.
    void keep(std::shared_ptr<void> options) { m_kept = std::move(options); }

    const std::string& command() const { return m_command; }
    const std::string& summary() const { return m_summary; }
    const std::vector<std::string>& description() const { return m_description; }
    const std::vector<std::string>& remarks() const { return m_remarks; }
    const std::vector<HelpList>& lists() const { return m_lists; }
    const std::vector<ExitCode>& exit_codes() const { return m_exit_codes; }
    const std::vector<std::string>& examples() const { return m_examples; }
    const std::deque<Argument>& options() const { return m_options; }
    const std::deque<Argument>& positionals() const { return m_positionals; }
    const std::vector<std::function<Problem()>>& rules() const { return m_rules; }

    /// The headings of the options, each once, in their order.
    std::vector<std::string> groups() const;

  private:
    template <class Value>
    static Argument& with_choices(Argument& argument, std::span<const Choice<Value>> choices) {
        for (const Choice<Value>& each : choices) {
            argument.choices.push_back({std::string(each.name), std::string(each.about)});
        }
        return argument;
    }

    std::string m_command, m_summary, m_group = "Options";
    std::vector<std::string> m_description, m_remarks, m_examples;
    std::vector<HelpList> m_lists;
    std::vector<ExitCode> m_exit_codes;
    std::deque<Argument> m_options, m_positionals;  // their addresses stay
    std::vector<std::function<Problem()>> m_rules;
    std::shared_ptr<void> m_kept;
};

}  // namespace nmk_shell
