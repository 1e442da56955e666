// route_command_help: the text of `nmk help route`.

#include "commands/route/route_command.h"

namespace nmk_route {

std::string route_help() {
    return R"(nmk route FILE: find a short route across a plane with blocked cells

Reads grid maps in the octile text format (x counts columns from the left, y rows from the top,
both from 0) and CSV lists of blocked points (rows x,y, box,X0,Y0,X1,Y1 and steps,SX,SY).

  --start X,Y          start of the route
  --goal X,Y           goal of the route
  --goal-kind NAME     default point; one of
                       point: the goal itself;
                       line: the goal or any cell past it in x, with its y;
                       line-with-gradient: the same, approached within the gradient;
                       moving-line: a goal that moves on in x while it cannot be reached
                       within the gradient
  --gradient G         largest change of y for each unit of x; for the last two kinds
  --forward            only steps ahead in x
  --corners cut|clear  whether a diagonal step may pass beside a blocked cell; default clear
                       for a map, cut for a list
  --box X0,Y0,X1,Y1    box of a list, instead of the one in the file
  --steps SX[,SY]      steps of a list, instead of those in the file; its lattice goes through
                       the start
  --csv FILE           write the nodes of the route as a table
  --svg FILE           draw the map, the visited cells in their order, and the route
  --html FILE          write the drawing and the figures as a page
  --json               print JSON instead of the text
  --quiet              print no text and no progress

If there is no route, the exit code is 1, the message names the visited cell nearest to the goal,
and files are written all the same.

Examples:
  nmk route samples/workshop.map --start 3,36 --goal 92,36 --svg route.svg
  nmk route samples/clamps.csv --start 0,5 --goal 8,8 --goal-kind moving-line --gradient 0.5 --forward
)";
}

}  // namespace nmk_route
