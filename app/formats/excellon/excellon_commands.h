// excellon_commands.h: the meaning of the G and M words of a drill program.
#pragma once

#include <string>

namespace nmk_excellon {

enum class ExcellonCommand {
    keep,       // holes do not depend on it
    keep_line,  // a message: the rest of the line is text
    routed,     // a routed path
    pattern,    // step and repeat
    unsupported,
    drill_mode,
    absolute,
    incremental,
    zero_point,
    slot,
    millimetres,
    inches,
    header,
    header_end,
    end
};

/// `letter` is G or M. An unknown word is unsupported.
ExcellonCommand excellon_command(char letter, int number);

/// The word as in messages, "G01".
std::string excellon_command_name(char letter, int number);

}  // namespace nmk_excellon
