// levels_command_help: the text of `nmk help levels`.

#include "commands/levels/levels_command.h"

namespace nmk_levels {

std::string levels_help() {
    return R"(nmk levels [NAME]: list the version levels of the library, or show one

A version level chooses between versions of a method, so that former results can be reproduced.
Every command takes --level, which sets a level for that one run.

  --find TEXT         levels with the text in their name or description
  --state WORD        levels in this state: unavailable, default, previous, preview or unknown
  --json              print the levels as JSON
  --quiet             print no text; --json still prints
  --level NAME=VALUE  set a level first: previous, default, preview or a number

Examples:
  nmk levels --find sort
  nmk order samples/cover_plate.drl --level itemsorter=0
)";
}

}  // namespace nmk_levels
