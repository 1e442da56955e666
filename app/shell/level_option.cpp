// level_option: the option --level NAME=SETTING, and names similar to a mistyped one.

#include "shell/level_option.h"

#include "text/escaped_text.h"
#include "text/similar_names.h"

#include <nmktoolbox/runtime/nmkVersion.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace nmk_shell {

namespace {

constexpr std::size_t max_shown_length = 200;  // of a name in a message

bool refuse(std::string& error, std::string message) {
    error = std::move(message);
    return false;
}

/// The argument in quotation marks, as one line of readable text.
std::string in_quotes(std::string_view text) {
    const bool is_cut = text.size() > max_shown_length;
    return "'" + nmk_text::line_text(text.substr(0, max_shown_length)) + (is_cut ? "...'" : "'");
}

bool set_number(nmkVersion& level, std::string_view setting, std::string& error) {
    int number = 0;
    const char* const end = setting.data() + setting.size();
    const auto [stop, failure] = std::from_chars(setting.data(), end, number);
    if (failure != std::errc() || stop != end || number < -1) {
        return refuse(error, "setting " + in_quotes(setting) +
                                 ": expected previous, default, preview or a whole number from -1");
    }
    const int highest = std::max(
        {level.get_previous_level(), level.get_default_level(), level.get_preview_level()});
    if (number > highest) {
        return refuse(error, "setting " + in_quotes(setting) +
                                 ": the highest setting of this level is " +
                                 std::to_string(highest));
    }
    level.set_level(number);
    return true;
}

}  // namespace

std::vector<std::string> similar_level_names(std::string_view name) {
    const dbgLevelManager& levels = *nmkVersion::get_manager();
    std::vector<std::string> names;
    for (int position = 0; position < levels.size(); ++position) {
        names.emplace_back(levels.level(position)->get_name());
    }
    return nmk_text::similar_names(name, names);
}

std::string unknown_level_message(std::string_view name) {
    std::string message = "unknown level " + in_quotes(name);
    const std::vector<std::string> near = similar_level_names(name);
    if (near.empty()) return message + "; 'nmk levels' lists them all";
    return message + "; " + nmk_text::did_you_mean(near);
}

bool apply_level_option(std::string_view text, std::string& error) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0 || equals + 1 == text.size()) {
        return refuse(error, "expected NAME=previous, NAME=default, NAME=preview or NAME=NUMBER");
    }
    const std::string name(text.substr(0, equals));
    const std::string_view setting = text.substr(equals + 1);
    // A zero byte in the name would end it early and find another level.
    const bool is_text = name.find('\0') == std::string::npos;
    auto* const level =
        is_text ? dynamic_cast<nmkVersion*>(nmkVersion::get_manager()->get_by_name(name.c_str()))
                : nullptr;
    if (level == nullptr) return refuse(error, unknown_level_message(name));
    if (setting == "default") return level->set_default() != 0;
    if (setting == "previous" || setting == "preview") {
        const int moved = setting == "previous" ? level->set_previous() : level->set_preview();
        if (moved != 0) return true;
        return refuse(error, "level " + name + " has no " + std::string(setting) + " setting");
    }
    return set_number(*level, setting, error);
}

}  // namespace nmk_shell
