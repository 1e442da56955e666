// levels_command: `nmk levels`: lists the version levels and their state.

#include "commands/levels/levels_command.h"

#include "commands/levels/print_levels.h"
#include "shell/command_result.h"
#include "shell/level_option.h"
#include "text/ascii.h"

#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace nmk_levels {

namespace {

constexpr nmk_shell::Choice<std::string_view> states[] = {{"unavailable", "unavailable"},
                                                          {"default", "default"},
                                                          {"previous", "previous"},
                                                          {"preview", "preview"},
                                                          {"unknown", "unknown"}};

struct Request {
    std::optional<std::string> name;
    std::optional<std::string> find;
    std::optional<std::string> state;
    bool json = false;
    bool quiet = false;
};

void declare_options(nmk_shell::OptionTable& table, Request& request) {
    table.describe(
        "A version level chooses between versions of a method, so that former results can be "
        "reproduced. Every command takes --level, which sets a level for that one run.");
    table.positional("NAME", nmk_shell::text_setter(request.name), "the level to show");
    table.group("Selection");
    table.option("--find", "TEXT", nmk_shell::text_setter(request.find),
                 "levels with the text in their name or description");
    table.choice("--state", "WORD", request.state, std::span(states), "levels in this state");
    table.group("Output");
    table.option("--json", request.json, "print the levels as JSON");
    table.option("--quiet", request.quiet, "print no text; --json still prints");
    table.check([&request]() -> nmk_shell::Problem {
        return request.name && (request.find || request.state)
                   ? "NAME cannot be combined with --find or --state"
                   : "";
    });
    table.example("nmk levels --find sort");
    table.example("nmk order samples/cover_plate.drl --level itemsorter=0");
}

bool contains(std::string_view text, std::string_view part) {
    return nmk_text::lower_case(text).find(nmk_text::lower_case(part)) != std::string::npos;
}

bool is_wanted(const nmkVersion& level, const Request& request) {
    if (request.name) return *request.name == level.get_name();
    if (request.state && *request.state != level.get_current()) return false;
    return !request.find || contains(level.get_name(), *request.find) ||
           contains(level.get_description(), *request.find);
}

std::vector<const nmkVersion*> wanted_levels(const Request& request) {
    std::vector<const nmkVersion*> found;
    const dbgLevelManager& levels = *nmkVersion::get_manager();
    for (int position = 0; position < levels.size(); ++position) {
        const auto* const level = dynamic_cast<const nmkVersion*>(levels.level(position));
        if (level != nullptr && is_wanted(*level, request)) found.push_back(level);
    }
    return found;
}

int show_levels(const Request& request, std::ostream& out, std::ostream& err) {
    const std::vector<const nmkVersion*> levels = wanted_levels(request);
    if (request.name && levels.empty()) {
        return nmk_shell::refuse(err,
                                 "nmk levels: " + nmk_shell::unknown_level_message(*request.name));
    }
    if (request.json) {
        print_levels_as_json(levels, out);
    } else if (!request.quiet && request.name) {
        print_one_level(*levels.front(), out);
    } else if (!request.quiet) {
        print_levels_as_table(levels, out);
    }
    return nmk_shell::finish(out, err, "the levels");
}

}  // namespace

nmk_shell::Run declare_levels(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<Request>(table, declare_options, show_levels);
}

}  // namespace nmk_levels
