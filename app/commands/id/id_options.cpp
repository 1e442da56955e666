// id_options: the command line of `nmk id`.

#include "commands/id/id_options.h"

#include <optional>
#include <span>

#include "text/escaped_text.h"

namespace nmk_id {

namespace {

using nmk_shell::Problem;

constexpr nmk_shell::Choice<Action> actions[] = {
    {"new", Action::make, "make N identifiers (1 without N) and print one on each line"},
    {"show", Action::show, "explain the identifier HEX, 32 lower-case hexadecimal digits"},
    {"dump", Action::dump,
     "list the identifiers in FILE (-: standard input), a stream of objects that are identifiers, "
     "owners and references; stops at the first object of another class"}};

constexpr nmk_shell::NumberRange counts =
    nmk_shell::whole_number(1, max_new_identifiers, "a whole number from 1 to 1000000");

Problem read_count(IdOptions& options) {
    if (options.argument.empty()) return {};
    const Problem problem = nmk_shell::number_setter(options.count, counts)(options.argument);
    return problem.empty() ? problem : "N " + nmk_text::quoted(options.argument) + ": " + problem;
}

Problem read_identifier(IdOptions& options) {
    const std::optional<IdentifierWords> words = words_of_text(options.argument);
    if (!words) {
        return "HEX " + nmk_text::quoted(options.argument) +
               ": expected 32 lower-case hexadecimal digits";
    }
    options.identifier = *words;
    return {};
}

Problem read_argument(IdOptions& options) {
    switch (options.action) {
        case Action::make:
            return read_count(options);
        case Action::show:
            return read_identifier(options);
        case Action::dump:
            return options.argument.empty() ? "dump: expected the name of a file" : "";
    }
    return {};
}

}  // namespace

void declare_options(nmk_shell::OptionTable& table, IdOptions& options) {
    table.describe(
        "Entities carry identifiers of sixteen bytes, which survive saving and loading. The words "
        "of one are the hash of the address where it was made, a stamp (as a rule the time), a "
        "serial and 0.");
    table.positional_choice("ACTION", options.action, std::span(actions), "what to do")
        .is_required = true;
    table.positional("ARGUMENT", nmk_shell::text_setter(options.argument), "N, HEX or FILE")
        .completes = nmk_shell::Completes::files;
    table.group("Output");
    table.option("--json", options.json, "print JSON");
    table.option("--quiet", options.quiet, "print no text; --json still prints");
    table.check([&options] { return read_argument(options); });
    table.example("nmk id new 3");
    table.example("nmk id show 6c1f0d9a69216f800000000700000000");
    table.example("nmk id dump samples/tool_list.ids");
}

}  // namespace nmk_id
