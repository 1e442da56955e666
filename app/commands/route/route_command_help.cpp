// route_command_help: what `nmk help route` prints.

#include "commands/route/route_command.h"

namespace nmk_route {

std::string route_help() {
    return R"(nmk route FILE: search a short route through a plane with blocked places

Reads grid maps in the octile text format (x counts columns from the left, y rows from the top,
both from 0) and CSV lists of blocked places (rows x,y, box,X0,Y0,X1,Y1 and steps,SX,SY).

  --start X,Y          where the route begins
  --goal X,Y           where it is to arrive
  --goal-kind NAME     point where nothing is said; or
                       line, at the goal or anywhere past it in x, with its y;
                       line-with-gradient, the same, reached within a gradient;
                       moving-line, a goal that moves on in x while it cannot be reached
                       within the gradient
  --gradient G         the greatest change of y for each unit of x; for the last two kinds
  --forward            only steps ahead in x
  --corners cut|clear  whether a diagonal step may pass beside a blocked place; a map is kept
                       clear, a list may be cut, where nothing is said
  --box X0,Y0,X1,Y1    the box of a list, in place of the one in the file
  --steps SX[,SY]      the steps of a list, the same; its lattice goes through the start
  --csv FILE           write the nodes of the route as a table
  --svg FILE           draw the map, the places visited in their order, and the route
  --html FILE          the same as a page with the figures
  --json               print JSON in place of the text
  --quiet              print no text and no progress

Ends with 1 when there is no route, and names the closed place that is nearest to the goal; files
are written all the same.

Examples:
  nmk route samples/workshop.map --start 3,36 --goal 92,36 --svg route.svg
  nmk route samples/clamps.csv --start 0,5 --goal 8,8 --goal-kind moving-line --gradient 0.5 --forward
)";
}

}  // namespace nmk_route
