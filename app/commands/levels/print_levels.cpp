// print_levels: version levels as a table, and as a list of the facts of one.

#include "commands/levels/print_levels.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>

namespace nmk_levels {

namespace {

std::string setting(int level, std::string_view without) {
    return level < 0 ? std::string(without) : std::to_string(level);
}

std::string on_one_line(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::string padded_right(std::string text, std::size_t width) {
    if (text.size() < width) text.insert(0, width - text.size(), ' ');
    return text;
}

std::string padded_left(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

struct Row {
    std::string name, state, level, previous, standard, preview, description;
};

void print_row(const Row& row, std::size_t name_width, std::ostream& out) {
    std::string line = padded_left(row.name, name_width) + "  " + padded_left(row.state, 11) +
                       padded_right(row.level, 7) + padded_right(row.previous, 10) +
                       padded_right(row.standard, 9) + padded_right(row.preview, 9) + "  " +
                       row.description;
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
}

}  // namespace

void print_levels_as_table(const std::vector<const nmkVersion*>& levels, std::ostream& out) {
    std::size_t name_width = 4;
    for (const nmkVersion* level : levels) {
        name_width = std::max(name_width, std::string_view(level->get_name()).size());
    }
    print_row({"name", "state", "level", "previous", "default", "preview", "description"},
              name_width, out);
    for (const nmkVersion* level : levels) {
        print_row(
            {level->get_name(), level->get_current(), std::to_string(level->get_level()),
             setting(level->get_previous_level(), "-"), setting(level->get_default_level(), "-"),
             setting(level->get_preview_level(), "-"), on_one_line(level->get_description())},
            name_width, out);
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
