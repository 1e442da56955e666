// excellon_commands.h: what the G and M words of a drill program ask for.
#pragma once

#include <string>

namespace nmk_excellon {

/// What a G or M word asks for.
enum class ExcellonCommand {
    keep,       // nothing that holes depend on
    keep_line,  // a message: the rest of the line is text
    routed,     // a path
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

/// `letter` is G or M. A word that is not known is unsupported.
ExcellonCommand excellon_command(char letter, int number);

/// The word as messages name it, "G01".
std::string excellon_command_name(char letter, int number);

}  // namespace nmk_excellon
