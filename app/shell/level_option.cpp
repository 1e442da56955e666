// level_option: the option --level NAME=SETTING, and names similar to a mistyped one.

#include "shell/level_option.h"

#include "text/ascii.h"
#include "text/escaped_text.h"

#include <nmktoolbox/runtime/nmkVersion.h>

#include <algorithm>
#include <charconv>
#include <numeric>
#include <utility>

namespace nmk_shell {

namespace {

constexpr std::size_t max_similar_names = 5;
constexpr std::size_t max_compared_length = 200;  // a longer name is not a typing error

/// The number of letters to insert, remove or replace to get from one text to the other.
std::size_t edit_distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row[to.size()];
}

constexpr std::size_t too_different = 1000;

/// How different two names are: 0 for equal names, too_different for names that are not similar.
std::size_t difference(std::string_view wanted, std::string_view name) {
    const std::size_t distance = edit_distance(wanted, name);
    if (distance <= std::max<std::size_t>(2, wanted.size() / 4)) return distance;
    const bool one_contains_the_other =
        wanted.size() >= 3 && (name.find(wanted) != std::string_view::npos ||
                               wanted.find(name) != std::string_view::npos);
    return one_contains_the_other ? 100 + distance : too_different;
}

bool refuse(std::string& error, std::string message) {
    error = std::move(message);
    return false;
}

/// The argument in quotation marks, as one line of readable text.
std::string in_quotes(std::string_view text) {
    const bool is_cut = text.size() > max_compared_length;
    return "'" + nmk_text::line_text(text.substr(0, max_compared_length)) + (is_cut ? "...'" : "'");
}

bool set_number(nmkVersion& level, std::string_view setting, std::string& error) {
    int number = 0;
    const char* const end = setting.data() + setting.size();
    const auto [stop, failure] = std::from_chars(setting.data(), end, number);
    if (failure != std::errc() || stop != end || number < -1) {
        return refuse(error, "--level " + std::string(level.get_name()) + "=" + in_quotes(setting) +
                                 ": expected previous, default, preview or a whole number from -1");
    }
    level.set_level(number);
    return true;
}

}  // namespace

std::vector<std::string> similar_level_names(std::string_view name) {
    if (name.empty() || name.size() > max_compared_length) return {};
    const std::string wanted = nmk_text::lower_case(name);
    std::vector<std::pair<std::size_t, std::string>> found;
    const dbgLevelManager& levels = *nmkVersion::get_manager();
    for (int position = 0; position < levels.size(); ++position) {
        const char* const each = levels.level(position)->get_name();
        const std::size_t distance = difference(wanted, nmk_text::lower_case(each));
        if (distance < too_different) found.emplace_back(distance, each);
    }
    std::sort(found.begin(), found.end());
    if (found.size() > max_similar_names) found.resize(max_similar_names);
    std::vector<std::string> names;
    for (auto& [distance, each] : found) names.push_back(std::move(each));
    return names;
}

std::string unknown_level_message(std::string_view name) {
    std::string message = "unknown level " + in_quotes(name);
    const std::vector<std::string> near = similar_level_names(name);
    if (near.empty()) return message + "; 'nmk levels' lists them all";
    message += "; did you mean ";
    for (std::size_t position = 0; position < near.size(); ++position) {
        if (position > 0) message += position + 1 < near.size() ? ", " : " or ";
        message += near[position];
    }
    return message + "?";
}

bool apply_level_option(std::string_view text, std::string& error) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0 || equals + 1 == text.size()) {
        return refuse(error, "--level " + in_quotes(text) +
                                 ": expected NAME=previous, NAME=default, NAME=preview or "
                                 "NAME=NUMBER");
    }
    const std::string name(text.substr(0, equals));
    const std::string_view setting = text.substr(equals + 1);
    // A zero byte in the name would end it early and find another level.
    const bool is_text = name.find('\0') == std::string::npos;
    auto* const level =
        is_text ? dynamic_cast<nmkVersion*>(nmkVersion::get_manager()->get_by_name(name.c_str()))
                : nullptr;
    if (level == nullptr) return refuse(error, "--level: " + unknown_level_message(name));
    if (setting == "default") return level->set_default() != 0;
    if (setting == "previous" || setting == "preview") {
        const int moved = setting == "previous" ? level->set_previous() : level->set_preview();
        if (moved != 0) return true;
        return refuse(error, "--level " + std::string(text) + ": level " + name + " has no " +
                                 std::string(setting) + " setting");
    }
    return set_number(*level, setting, error);
}

}  // namespace nmk_shell
