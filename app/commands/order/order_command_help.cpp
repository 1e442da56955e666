// order_command_help: the text of `nmk help order`.

#include "commands/order/order_command.h"
#include "commands/order/sort_type_names.h"

namespace nmk_order {

std::string order_help() {
    return R"(nmk order FILE: order holes and slots so that the cutter travels little

Reads drill files (Excellon), CSV (x,y[,z] for holes; x,y,z,x2,y2,z2 for slots) and TSPLIB.
Each tool is ordered by itself; slots may be cut from either end.

  --type NAME         how to order; default shortest; one of
                      )" +
           sort_type_name_list() + R"(
  --across-tools      one order of all items, whatever their tool
  --start X,Y[,Z]     position of the cutter before the first item of each tool; default 0,0
  --tolerance T       largest difference of items in one row (x, y, diag..., concentric);
                      default 0.1 mm
  --units mm|inch     unit of --start and --tolerance, and of a file that states none
  --rapid RATE        mm per minute, for the seconds in the table; default 10000
  -o OUT              write the ordered items: .drl (from a drill file), .csv or .json; OUT may
                      be FILE itself
  --svg FILE          draw before and after side by side
  --html FILE         write the drawing and the figures as a page
  --debug CHANNEL     draw a debug channel of the library: nmkPointSorter (the points before and
                      after) or nmkAnnealStateNonReversible (one-way lines); CHANNEL=LEVEL
                      sets its level
  --debug-svg FILE    file for the debug channel; needs --debug
  --json              print the figures as JSON instead of the table
  --quiet             print no table and no progress
  --level NAME=VALUE  set a version level first; itemsorter=0 is the older method of shortest

Travel is counted within each tool, from its first item to its last. Ctrl-C keeps the items
ordered so far; the others follow in the order of the file.

Example:
  nmk order samples/cover_plate.drl --svg cover.svg -o ordered.drl
)";
}

}  // namespace nmk_order
