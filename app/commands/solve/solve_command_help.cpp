// solve_command_help: what `nmk help solve` prints.

#include "commands/solve/solve_command.h"

namespace nmk_solve {

std::string solve_help() {
    return R"(nmk solve KIND NUMBERS: roots, angles and probabilities, with what is left when put back

  polynomial C0 C1 [C2 [C3 [C4]]]  real roots of C0 + C1 x + ... + C4 x^4 = 0, ascending
  root LOW HIGH C0 C1 ...          the root of a polynomial between two ends
  extremum LOW HIGH C0 C1 C2 ...   its highest or lowest point between two ends
  angles1 A B C                    A cos t + B sin t = C
  angles2 A B C D E F              A cos^2 t + B cos t sin t + C sin^2 t + D cos t + E sin t + F = 0
  normal X                         the normal distribution: the probability of at most X

The others have two angles, phi from 0 to 90 degrees and psi, and R = H + K sin phi not below 0:

  angles3 A B C D E F G H K        sin phi (A cos psi + B sin psi) + C cos phi = 0,
                                   F cos phi + (D cos psi + E sin psi) R = G
  angles4 A B C D H K              sin phi (A cos psi + B sin psi) + C cos phi = 0,
                                   R (A sin psi - B cos psi) = D
  angles4-one A B C D H K          the same, but one solution where a short way to it exists
  angles5 A B C D E H K            R (A cos psi + B sin psi) = C,
                                   R (A sin psi - B cos psi) + D cos phi = E
  angles6 A B C D K                that of angles4 with H = 0

  --csv FILE           many problems: a row KIND,NUMBERS each, or NUMBERS behind a KIND above
  --svg FILE           draw the polynomial and its roots
  --json               print JSON in place of the text
  --quiet              print no text

Examples:
  nmk solve polynomial 1 -3 2 --svg roots.svg
  nmk solve angles4 1 0.5 0.3 0.4 1 2
  nmk solve --csv samples/problems.csv --json
)";
}

}  // namespace nmk_solve
