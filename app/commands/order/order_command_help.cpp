// order_command_help: what `nmk help order` prints.

#include "commands/order/order_command.h"
#include "commands/order/sort_type_names.h"

namespace nmk_order {

std::string order_help() {
    return R"(nmk order FILE: put holes and slots in an order in which the cutter travels little

Reads drill files (Excellon), CSV (x,y[,z] for holes; x,y,z,x2,y2,z2 for slots) and TSPLIB.
Each tool is ordered by itself; slots may be cut from either end.

  --type NAME         shortest where nothing is said; one of
                      )" +
           sort_type_name_list() + R"(
  --across-tools      one order of all items, whatever their tool
  --start X,Y[,Z]     where the cutter stands before the first item of each tool; default 0,0
  --tolerance T       how far items of one row may differ (x, y, diag..., concentric);
                      default 0.1 mm
  --units mm|inch     unit of --start and --tolerance, and of a file that does not tell its own
  --rapid RATE        mm per minute, for the seconds in the table; default 10000
  -o OUT              write the ordered items: .drl (from a drill file), .csv or .json; may be
                      FILE itself
  --svg FILE          draw before and after side by side
  --html FILE         the same as a page with the figures
  --debug CHANNEL     what the library draws for its developers: nmkPointSorter (the points before
                      and after), nmkAnnealStateNonReversible (one-way lines); =LEVEL for less
  --debug-svg FILE    where to draw it; the two go together
  --json              print the figures as JSON in place of the table
  --quiet             print no table and no progress
  --level NAME=VALUE  set a version level first; itemsorter=0 is the older method of shortest

Travel is counted within each tool, from its first item to its last. Ctrl-C keeps what is done.

Example:
  nmk order samples/cover_plate.drl --svg cover.svg -o ordered.drl
)";
}

}  // namespace nmk_order
