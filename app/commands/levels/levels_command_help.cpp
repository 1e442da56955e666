// levels_command_help: what `nmk help levels` prints.

#include "commands/levels/levels_command.h"

namespace nmk_levels {

std::string levels_help() {
    return R"(nmk levels [NAME]: list the version levels of the library, or show one

A version level chooses between generations of a method, so that old results can be had again.
Every command takes --level, which moves a level for that one run.

  --find TEXT         levels whose name or description holds the text
  --state WORD        levels that stand at unavailable, default, previous, preview or unknown
  --json              print the levels as JSON
  --quiet             print no text; --json still prints
  --level NAME=VALUE  previous, default, preview or a number

Examples:
  nmk levels --find sort
  nmk order samples/cover_plate.drl --level itemsorter=0
)";
}

}  // namespace nmk_levels
