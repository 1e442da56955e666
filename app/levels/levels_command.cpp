#include "levels/levels_command.h"

#include "levels/level_option.h"
#include "levels/print_levels.h"
#include "text/escaped_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <ostream>
#include <string_view>

namespace nmk_app {

namespace {

constexpr std::array<std::string_view, 5> state_words = {"unavailable", "default", "previous",
                                                         "preview", "unknown"};

struct Request {
    std::optional<std::string> name;
    std::optional<std::string> find;
    std::optional<std::string> state;
    std::vector<std::string> moves;
    bool as_json = false;
};

// An option that takes a value, as "--find TEXT" or as "--find=TEXT".
enum class Taken { no, yes, value_is_missing };

Taken take_value(const std::vector<std::string>& arguments, std::size_t& position,
                 std::string_view option, std::string& value) {
    const std::string& argument = arguments[position];
    if (argument == option) {
        if (position + 1 == arguments.size()) return Taken::value_is_missing;
        value = arguments[++position];
        return Taken::yes;
    }
    const bool has_value = argument.size() > option.size() && argument[option.size()] == '=' &&
                           argument.compare(0, option.size(), option) == 0;
    if (!has_value) return Taken::no;
    value = argument.substr(option.size() + 1);
    return Taken::yes;
}

bool take_option(const std::vector<std::string>& arguments, std::size_t& position, Request& request,
                 std::string& error) {
    std::string value;
    for (const std::string_view option : {"--find", "--state", "--level"}) {
        switch (take_value(arguments, position, option, value)) {
            case Taken::no:
                continue;
            case Taken::value_is_missing:
                error = std::string(option) + " needs a value";
                return false;
            case Taken::yes:
                break;
        }
        if (option == "--find") request.find = value;
        if (option == "--state") request.state = value;
        if (option == "--level") request.moves.push_back(value);
        return true;
    }
    error = "unknown option '" + arguments[position] + "'";
    return false;
}

bool check_state(const std::string& word, std::string& error) {
    if (std::find(state_words.begin(), state_words.end(), word) != state_words.end()) return true;
    error = "--state '" + word + "': expected unavailable, default, previous, preview or unknown";
    return false;
}

bool read_request(const std::vector<std::string>& arguments, Request& request, std::string& error) {
    for (std::size_t position = 0; position < arguments.size(); ++position) {
        const std::string& argument = arguments[position];
        if (argument == "--json") {
            request.as_json = true;
        } else if (argument == "--quiet") {
            continue;  // there is no progress to keep quiet about
        } else if (argument.starts_with('-')) {
            if (!take_option(arguments, position, request, error)) return false;
        } else if (!request.name) {
            request.name = argument;
        } else {
            error = "one NAME at most, found '" + *request.name + "' and '" + argument + "'";
            return false;
        }
    }
    if (request.name && (request.find || request.state)) {
        error = "NAME goes with neither --find nor --state";
        return false;
    }
    return !request.state || check_state(*request.state, error);
}

bool holds(std::string_view text, std::string_view part) {
    const auto same_letter = [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same_letter) !=
               text.end() ||
           part.empty();
}

bool is_wanted(const nmkVersion& level, const Request& request) {
    if (request.name) return *request.name == level.get_name();
    if (request.state && *request.state != level.get_current()) return false;
    return !request.find || holds(level.get_name(), *request.find) ||
           holds(level.get_description(), *request.find);
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

int fail(std::ostream& err, const std::string& message) {
    err << "nmk levels: " << line_text(message) << '\n';
    return 2;
}

}  // namespace

int run_levels(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    Request request;
    std::string error;
    if (!read_request(arguments, request, error)) return fail(err, error);
    for (const std::string& move : request.moves) {
        if (!apply_level_option(move, error)) return fail(err, error);
    }
    const std::vector<const nmkVersion*> levels = wanted_levels(request);
    if (request.name && levels.empty()) return fail(err, unknown_level_message(*request.name));
    if (request.as_json) {
        print_levels_as_json(levels, out);
    } else if (request.name) {
        print_one_level(*levels.front(), out);
    } else {
        print_levels_as_table(levels, out);
    }
    out.flush();
    return out ? 0 : fail(err, "standard output cannot be written");
}

}  // namespace nmk_app
