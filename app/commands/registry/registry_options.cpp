// registry_options: the command line of `nmk registry`.

#include "commands/registry/registry_options.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "shell/command_result.h"

namespace nmk_registry {

namespace {

using nmk_shell::Problem;

constexpr std::size_t any_number = 1000000;

// An action, how many words follow it, and how they are called.
struct ActionFacts {
    std::string_view name;
    Action action;
    std::size_t least, most;
    std::string_view words, about;
};

constexpr ActionFacts all_actions[] = {
    {"list", Action::list, 0, 1, "[KEY]", "print the tree below a key, or below all four roots"},
    {"get", Action::get, 1, 2, "KEY [NAME]",
     "print a value alone; without a NAME the default value of the key"},
    {"set", Action::set, 2, any_number, "KEY NAME VALUE",
     "set a value and create the key if it is missing; \"\" names the default value"},
    {"delete", Action::erase, 1, 2, "KEY [NAME]", "delete a value, or a key"},
    {"copy", Action::copy, 2, 2, "KEY TARGET",
     "copy a key with all that is below it into another key"},
    {"export", Action::export_tree, 1, 1, "KEY", "print the tree below a key as JSON"},
    {"import", Action::import_tree, 1, 2, "FILE [KEY]",
     "write an exported tree back where it was, or below another key; - is standard input"},
};

constexpr auto actions = [] {
    std::array<nmk_shell::Choice<Action>, std::size(all_actions)> choices;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        choices[i] = {all_actions[i].name, all_actions[i].action, {}};
    }
    return choices;
}();

const ActionFacts& facts_of(Action action) {
    return *std::ranges::find(all_actions, action, &ActionFacts::action);
}

nmk_shell::HelpList action_list() {
    nmk_shell::HelpList list{"Actions and their words", {}, {}};
    for (const ActionFacts& facts : all_actions) {
        list.terms.push_back(
            {std::string(facts.name) + " " + std::string(facts.words), std::string(facts.about)});
    }
    return list;
}

Problem read_key(const std::string& word, KeyPath& key) {
    const auto path = read_key_path(word);
    if (!path) return path.error().message;
    key = *path;
    return {};
}

Problem read_value(RegistryOptions& options) {
    const auto& words = options.words;
    const auto data = read_data(options.type, {words.begin() + 2, words.end()});
    if (!data) return data.error().message;
    options.value = {words[1], options.type, *data};
    return {};
}

// The words of an action that begins with a key.
Problem read_key_and_rest(RegistryOptions& options) {
    options.has_key = !options.words.empty();
    if (!options.has_key) return {};
    Problem problem = read_key(options.words[0], options.key);
    if (!problem.empty() || options.words.size() == 1) return problem;
    if (options.action == Action::copy) return read_key(options.words[1], options.target);
    options.has_name = true;
    options.value.name = options.words[1];
    return options.action == Action::set ? read_value(options) : Problem();
}

Problem read_words(RegistryOptions& options) {
    if (options.action != Action::import_tree) return read_key_and_rest(options);
    options.input_file = options.words[0];
    options.has_key = options.words.size() == 2;
    return options.has_key ? read_key(options.words[1], options.key) : Problem();
}

Problem check(RegistryOptions& options) {
    const ActionFacts& facts = facts_of(options.action);
    if (options.words.size() < facts.least || options.words.size() > facts.most) {
        return "expected nmk registry " + std::string(facts.name) + " " + std::string(facts.words);
    }
    if (options.json && options.action != Action::list && options.action != Action::get) {
        return "--json goes with list and get; export prints JSON";
    }
    if (options.json && options.words.empty()) return "--json needs a KEY to list";
    if (!options.output_file.empty() && options.action != Action::export_tree) {
        return "--output goes with export";
    }
    return read_words(options);
}

}  // namespace

void declare_registry_options(nmk_shell::OptionTable& table, RegistryOptions& options) {
    table.describe(
        "Lists and changes the registry that the programs of a user share. A KEY is written "
        "HKCU/Software/..., or with HKLM, HKCR or HKU; %2F is a slash in a name, %25 a percent "
        "sign.");
    table
        .positional_choice("ACTION", options.action, std::span(actions),
                           "what to do, as listed below")
        .is_required = true;
    table
        .positional(
            "WORD",
            [&options](const std::string& word) {
                options.words.push_back(word);
                return Problem();
            },
            "the KEY, NAME, VALUE, TARGET or FILE of the action")
        .is_many = true;
    table.list(action_list());
    table.group("Options");
    table.choice("--type", "TYPE", options.type, value_types(), "the type of the VALUE to set");
    table.option("--recursive", options.recursive, "delete a key with all that is below it");
    table.number("--wait", "SECONDS", options.seconds,
                 {0, true, 86400, "a number of seconds from 0 to 86400"},
                 "how long to wait while another session holds the lock");
    table.group("Output");
    table.output_file("-o,--output", options.output_file, "write the export to a file");
    table.option("--json", options.json, "print the list or the value as JSON");
    table.option("--quiet", options.quiet, "print no text; JSON is still printed");
    table.check([&options] { return check(options); });
    table.exit_code(nmk_shell::no_result,
                    "the key or value does not exist, or another session holds the lock");
    table.example("nmk registry import samples/settings.json");
    table.example("nmk registry list HKCU/Software/Norvex");
    table.example("nmk registry set HKCU/Software/Norvex Tolerance 42 --type REG_DWORD");
    table.example("nmk registry delete HKCU/Software/Norvex --recursive");
}

}  // namespace nmk_registry
