// print_levels: version levels as a table, and as a list of the facts of one.

#include "commands/levels/print_levels.h"

#include "text/wrapped_text.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>

namespace nmk_levels {

namespace {

constexpr std::size_t description_indent = 4;

std::string setting(int level, std::string_view without) {
    return level < 0 ? std::string(without) : std::to_string(level);
}

std::string on_one_line(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// "level 1, previous 0, default 1, preview -: " and the description.
std::string facts_text(const nmkVersion& level) {
    return "level " + std::to_string(level.get_level()) + ", previous " +
           setting(level.get_previous_level(), "-") + ", default " +
           setting(level.get_default_level(), "-") + ", preview " +
           setting(level.get_preview_level(), "-") + ": " + level.get_description();
}

}  // namespace

void print_levels_as_table(const std::vector<const nmkVersion*>& levels, std::ostream& out) {
    std::size_t name_width = 0;
    for (const nmkVersion* level : levels) {
        name_width = std::max(name_width, std::string_view(level->get_name()).size());
    }
    for (const nmkVersion* level : levels) {
        std::string name = level->get_name();
        name.append(name_width - name.size(), ' ');
        out << name << "  " << level->get_current() << '\n'
            << nmk_text::wrapped(on_one_line(facts_text(*level)), description_indent,
                                 nmk_text::terminal_columns);
    }
    out << std::to_string(levels.size()) << (levels.size() == 1 ? " level\n" : " levels\n");
}

void print_one_level(const nmkVersion& level, std::ostream& out) {
    out << "name           " << level.get_name() << '\n'
        << "state          " << level.get_current() << '\n'
        << "level          " << std::to_string(level.get_level()) << '\n'
        << "previous       " << setting(level.get_previous_level(), "-") << '\n'
        << "default        " << setting(level.get_default_level(), "-") << '\n'
        << "preview        " << setting(level.get_preview_level(), "-") << '\n'
        << "prerelease     " << (level.get_prerelease() != 0 ? "yes" : "no") << '\n'
        << "description    " << on_one_line(level.get_description()) << '\n'
        << "documentation  " << level.get_link() << '\n';
}

}  // namespace nmk_levels
