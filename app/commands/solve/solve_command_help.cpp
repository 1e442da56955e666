// solve_command_help: the text of `nmk help solve`.

#include "commands/solve/solve_command.h"

namespace nmk_solve {

std::string solve_help() {
    return R"(nmk solve KIND NUMBERS: compute roots, angles and probabilities, with their residuals

  polynomial C0 C1 [C2 [C3 [C4]]]  real roots of C0 + C1 x + ... + C4 x^4 = 0, ascending
  root LOW HIGH C0 C1 ...          the root of a polynomial between LOW and HIGH
  extremum LOW HIGH C0 C1 C2 ...   its highest or lowest point between LOW and HIGH
  angles1 A B C                    A cos t + B sin t = C
  angles2 A B C D E F              A cos^2 t + B cos t sin t + C sin^2 t + D cos t + E sin t + F = 0
  normal X                         the standard normal distribution: the probability of at most X

The other kinds have two angles: psi, and phi from 0 to 90 degrees; R = H + K sin phi is not negative:

  angles3 A B C D E F G H K        sin phi (A cos psi + B sin psi) + C cos phi = 0,
                                   F cos phi + (D cos psi + E sin psi) R = G
  angles4 A B C D H K              sin phi (A cos psi + B sin psi) + C cos phi = 0,
                                   R (A sin psi - B cos psi) = D
  angles4-one A B C D H K          the same, but only one solution if a direct method finds it
  angles5 A B C D E H K            R (A cos psi + B sin psi) = C,
                                   R (A sin psi - B cos psi) + D cos phi = E
  angles6 A B C D K                angles4 with H = 0

  --csv FILE           solve a table: rows KIND,NUMBERS, or rows NUMBERS if KIND is an argument
  --svg FILE           draw the polynomial and its roots
  --json               print JSON instead of the text
  --quiet              print no text

Examples:
  nmk solve polynomial 1 -3 2 --svg roots.svg
  nmk solve angles4 1 0.5 0.3 0.4 1 2
  nmk solve --csv samples/problems.csv --json
)";
}

}  // namespace nmk_solve
