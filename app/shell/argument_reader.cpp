// argument_reader: reads the arguments of a command as its option table declares them.
//
// CLI11 does the reading. It gives a meaning to some values ("++", "[a,b]", "-1", an empty one)
// that are names or numbers here, so every value is marked before and unmarked afterwards.

#include "shell/argument_reader.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "text/escaped_text.h"
#include "text/number_reader.h"
#include "text/similar_names.h"

namespace nmk_shell {

namespace {

using Words = std::vector<std::string>;

constexpr char value_mark = '\x01';
constexpr const char* positional_words = "words";  // all positional arguments, for CLI11

std::string marked(std::string_view value) { return value_mark + std::string(value); }

std::string unmarked(const std::string& word) {
    return word.starts_with(value_mark) ? word.substr(1) : word;
}

/// True for "-3", and for "-1e999", which is too large for a number but is not an option either.
bool is_negative_number(const std::string& word) {
    return word.starts_with('-') &&
           (nmk_text::read_number(word) || word.find_first_of("0123456789.") == 1);
}

/// The arguments with a mark before each value that can be recognised as one.
Words with_marks(const Words& arguments) {
    Words result;
    bool only_positional = false;
    for (const std::string& word : arguments) {
        const bool is_value =
            only_positional || !word.starts_with('-') || word == "-" || is_negative_number(word);
        const std::size_t equals = word.starts_with("--") ? word.find('=') : std::string::npos;
        only_positional = only_positional || word == "--";
        if (is_value) {
            result.push_back(marked(word));
        } else if (equals != std::string::npos) {
            result.push_back(word.substr(0, equals + 1) + marked(word.substr(equals + 1)));
        } else {
            result.push_back(word);
        }
    }
    return result;
}

/// `--start "1,2,x": expected X,Y`
Problem problem_of(const std::string& name, const std::string& value, const Problem& expected) {
    return expected.empty() ? expected : name + " " + nmk_text::quoted(value) + ": " + expected;
}

std::string see_help(const OptionTable& table) { return "; see nmk help " + table.command(); }

/// Reads the arguments of one command line; keeps the first problem.
class ArgumentReader {
  public:
    explicit ArgumentReader(const OptionTable& table) : m_table(table), m_app("", table.command()) {
        m_app.set_help_flag();
        m_app.allow_extras();
        for (const Argument& option : table.options()) {
            add(option);
        }
        m_app
            .add_option(positional_words,
                        [this](const Words& words) {
                            m_words = words;
                            return true;
                        })
            ->expected(0, CLI::detail::expected_max_vector_size)
            ->allow_extra_args();
    }

    Problem read(const Words& arguments) {
        Words words = with_marks(arguments);
        std::reverse(words.begin(), words.end());  // as CLI11 takes them
        try {
            m_app.parse(std::move(words));
        } catch (const CLI::ArgumentMismatch&) {
            // Only the last argument can lack its value.
            return arguments.back() + " needs a value";
        }
        refuse_unknown_options();
        set_ordered();
        set_positionals();
        check_required();
        check_rules();
        return m_problem;
    }

  private:
    void note(const Problem& problem) {
        if (m_problem.empty()) {
            m_problem = problem;
        }
    }

    void add(const Argument& option) {
        const auto set = [this, &option](const Words& values) {
            m_given.push_back(&option);
            for (const std::string& value : values) {
                if (option.is_ordered) continue;
                option.is_switch() ? set_switch(option, value) : set_value(option, value);
            }
            return true;
        };
        auto* const added = m_app.add_option(option.names, set);
        added->expected(option.is_switch() ? 0 : 1)
            ->multi_option_policy(option.is_many ? CLI::MultiOptionPolicy::TakeAll
                                                 : CLI::MultiOptionPolicy::TakeLast);
        if (option.is_ordered) m_ordered.emplace(added, &option);
    }

    /// CLI11 calls back once for each option; its record of the order has each occurrence.
    void set_ordered() {
        std::map<const CLI::Option*, std::size_t> taken;
        for (const CLI::Option* const given : m_app.parse_order()) {
            const auto ordered = m_ordered.find(given);
            if (ordered == m_ordered.end()) continue;
            const std::size_t next = taken[given]++;
            if (next < given->results().size()) {
                set_value(*ordered->second, given->results()[next]);
            }
        }
    }

    void set_switch(const Argument& option, const std::string& value) {
        if (value.starts_with(value_mark)) {
            note(option.long_name() + " takes no value");
        } else {
            note(option.set({}));
        }
    }

    void set_value(const Argument& option, const std::string& value) {
        const std::string text = unmarked(value);
        note(problem_of(option.long_name(), text, option.set(text)));
    }

    /// An unknown option may have taken a positional argument for its value, so it comes first.
    void refuse_unknown_options() {
        for (const std::string& word : m_app.remaining()) {
            if (word == "--") {
                continue;
            }
            const std::string name = word.substr(0, word.find('='));
            const std::string similar = nmk_text::did_you_mean(similar_options(name));
            m_problem = "unknown option " + nmk_text::quoted(name) +
                        (similar.empty() ? "" : " (" + similar + ")") + see_help(m_table);
            return;
        }
    }

    Words similar_options(const std::string& name) const {
        Words known;
        for (const Argument& option : m_table.options()) {
            known.push_back(option.long_name().substr(2));
        }
        Words similar = nmk_text::similar_names(name.substr(name.find_first_not_of('-')), known);
        for (std::string& each : similar) {
            each.insert(0, "--");
        }
        return similar;
    }

    void set_positionals() {
        std::size_t next = 0;
        for (const Argument& positional : m_table.positionals()) {
            const std::size_t end = positional.is_many ? m_words.size() : next + 1;
            for (; next < std::min(end, m_words.size()); ++next) {
                const std::string text = unmarked(m_words[next]);
                note(problem_of(positional.names, text, positional.set(text)));
                m_given.push_back(&positional);
            }
        }
        if (next < m_words.size()) {
            refuse_word(next);
        }
    }

    void refuse_word(std::size_t position) {
        const std::string found = nmk_text::quoted(unmarked(m_words[position]));
        if (m_table.positionals().empty()) {
            note("unexpected argument " + found + see_help(m_table));
        } else {
            note("expected one " + m_table.positionals().back().names + "; found " +
                 nmk_text::quoted(unmarked(m_words[position - 1])) + " and " + found);
        }
    }

    void check_required() {
        for (const auto* const list : {&m_table.positionals(), &m_table.options()}) {
            for (const Argument& each : *list) {
                if (each.is_required && !is_given(each)) {
                    note("expected " + each.long_name() +
                         (each.is_switch() ? "" : " " + each.value) + see_help(m_table));
                }
            }
        }
    }

    bool is_given(const Argument& argument) const {
        return std::find(m_given.begin(), m_given.end(), &argument) != m_given.end();
    }

    void check_rules() {
        for (auto rule = m_table.rules().begin();
             m_problem.empty() && rule != m_table.rules().end(); ++rule) {
            note((*rule)());
        }
    }

    const OptionTable& m_table;
    CLI::App m_app;
    Words m_words;  // marked
    std::vector<const Argument*> m_given;
    std::map<const CLI::Option*, const Argument*> m_ordered;
    Problem m_problem;
};

}  // namespace

nmk_text::Result<void> read_arguments(const OptionTable& table,
                                      const std::vector<std::string>& arguments) {
    Problem problem = ArgumentReader(table).read(arguments);
    return problem.empty() ? nmk_text::Result<void>() : nmk_text::Error{{}, 0, std::move(problem)};
}

bool has_argument(const std::vector<std::string>& arguments,
                  const std::vector<std::string>& names) {
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    return std::find_first_of(arguments.begin(), end, names.begin(), names.end()) != end;
}

}  // namespace nmk_shell
