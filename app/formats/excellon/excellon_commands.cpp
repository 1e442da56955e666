// excellon_commands: the meaning of the G and M words of a drill program.

#include "formats/excellon/excellon_commands.h"

#include <algorithm>
#include <iterator>

namespace nmk_excellon {

namespace {

struct Row {
    char letter;
    int first, last;  // numbers
    ExcellonCommand command;
};

constexpr Row rows[] = {
    {'G', 0, 3, ExcellonCommand::routed},        {'G', 5, 5, ExcellonCommand::drill_mode},
    {'G', 40, 42, ExcellonCommand::routed},      {'G', 81, 81, ExcellonCommand::drill_mode},
    {'G', 85, 85, ExcellonCommand::slot},        {'G', 90, 90, ExcellonCommand::absolute},
    {'G', 91, 91, ExcellonCommand::incremental}, {'G', 92, 93, ExcellonCommand::zero_point},
    {'M', 0, 0, ExcellonCommand::end},           {'M', 1, 2, ExcellonCommand::pattern},
    {'M', 6, 6, ExcellonCommand::keep},          {'M', 8, 8, ExcellonCommand::pattern},
    {'M', 9, 9, ExcellonCommand::keep},          {'M', 15, 17, ExcellonCommand::routed},
    {'M', 25, 25, ExcellonCommand::pattern},     {'M', 30, 30, ExcellonCommand::end},
    {'M', 45, 45, ExcellonCommand::keep_line},   {'M', 47, 47, ExcellonCommand::keep_line},
    {'M', 48, 48, ExcellonCommand::header},      {'M', 71, 71, ExcellonCommand::millimetres},
    {'M', 72, 72, ExcellonCommand::inches},      {'M', 95, 95, ExcellonCommand::header_end},
};

}  // namespace

ExcellonCommand excellon_command(char letter, int number) {
    const auto* row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& candidate) {
        return candidate.letter == letter && candidate.first <= number && number <= candidate.last;
    });
    return row != std::end(rows) ? row->command : ExcellonCommand::unsupported;
}

std::string excellon_command_name(char letter, int number) {
    return letter + std::string(number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace nmk_excellon
