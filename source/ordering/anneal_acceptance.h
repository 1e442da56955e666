// anneal_acceptance.h: which worse moves the annealer accepts.
//
// A move is accepted when its probability is above a random number, of which there are only 32768.
// So instead of a power for each move there is a table of the bounds that the power's argument must
// stay below. The bounds are accurate to a relative width of `guard` only; within it the decision
// is made with the exact power, so that it is always the one of the formula.
#pragma once

#include <cstddef>
#include <vector>

#include "ordering/anneal_schedule.h"

namespace nmk_ordering {

class Acceptance {
  public:
    /// The only table, computed on first use.
    static const Acceptance& table();

    /// The probability that a move from energy `current` to `candidate` is accepted.
    static double probability(double current, double candidate, double temperature);

    /// Whether a move that does not improve is accepted when `draw` (0 to 32767) was drawn.
    bool accepts(double current, double candidate, double temperature, int draw) const {
        if (temperature == 0.0) return false;
        if (temperature > 0.0) {
            const double rise = (candidate - current) * q_less_one / temperature;
            const double bound = m_bounds[static_cast<std::size_t>(draw)];
            if (rise < bound * (1.0 - guard)) return true;
            if (rise > bound * (1.0 + guard)) return false;
        }
        return accepts_exactly(current, candidate, temperature, draw);
    }

    /// For a `rise` of energy of at least this times the temperature, only draw 0 accepts.
    double sure_rejection() const { return m_sure_rise; }

  private:
    static constexpr double guard = 1e-5;

    Acceptance();
    static bool accepts_exactly(double current, double candidate, double temperature, int draw);

    std::vector<float> m_bounds;  // by draw, of (candidate - current) * q_less_one / temperature
    double m_sure_rise;
};

}  // namespace nmk_ordering
