// levels_command: `nmk levels`: lists the version levels and their state.

#include "commands/levels/levels_command.h"

#include "commands/levels/print_levels.h"
#include "shell/command_options.h"
#include "shell/command_result.h"
#include "shell/level_option.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <string_view>

namespace nmk_levels {

namespace {

constexpr std::array<std::string_view, 5> state_words = {"unavailable", "default", "previous",
                                                         "preview", "unknown"};

struct Request {
    std::optional<std::string> name;
    std::optional<std::string> find;
    std::optional<std::string> state;
    bool json = false;
    bool quiet = false;
};

using Problem = std::string;  // empty: none

Problem set_name(Request& request, const std::string& argument) {
    if (request.name) {
        return "expected at most one NAME, found '" + *request.name + "' and '" + argument + "'";
    }
    request.name = argument;
    return {};
}

Problem set_find(Request& request, const std::string& value) {
    request.find = value;
    return {};
}

Problem set_state(Request& request, const std::string& value) {
    if (std::find(state_words.begin(), state_words.end(), value) == state_words.end()) {
        return "--state '" + value +
               "': expected unavailable, default, previous, preview or unknown";
    }
    request.state = value;
    return {};
}

Problem check(Request& request) {
    return request.name && (request.find || request.state)
               ? "NAME cannot be combined with --find or --state"
               : "";
}

constexpr nmk_shell::ValueOption<Request> value_options[] = {{"--find", set_find},
                                                             {"--state", set_state}};

constexpr nmk_shell::SwitchOption<Request> switches[] = {{"--json", &Request::json},
                                                         {"--quiet", &Request::quiet}};

constexpr nmk_shell::OptionTable<Request> table{"levels", value_options, switches, set_name, check};

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

int run_levels(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    return nmk_shell::run_with(
        nmk_shell::read_options(table, arguments), "levels", err,
        [&](const Request& request) { return show_levels(request, out, err); });
}

}  // namespace nmk_levels
