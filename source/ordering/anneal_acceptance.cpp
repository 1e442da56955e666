#include "ordering/anneal_acceptance.h"

#include <exactmath/exact_power.h>

#include "ordering/anneal_draw.h"
#include "ordering/anneal_schedule.h"

#include <limits>

namespace nmk_ordering {
namespace {

// The argument of the power, less 1, at which the probability falls to that of `draw`.
double bound_of(int draw) {
    // Draw 0 accepts any probability above zero: until the power exceeds the largest double.
    const double power = draw == 0 ? std::numeric_limits<double>::max()
                                   : mlRandom::max_drawn / static_cast<double>(draw);
    return nmk_exact::exact_pow(power, 1.0 / reciprocal_of_q_less_one) - 1.0;
}

}  // namespace

const Acceptance& Acceptance::table() {
    static const Acceptance only_one;
    return only_one;
}

Acceptance::Acceptance() : m_bounds(mlRandom::max_drawn + 1) {
    for (int draw = 0; draw <= mlRandom::max_drawn; ++draw) {
        m_bounds[static_cast<std::size_t>(draw)] = static_cast<float>(bound_of(draw));
    }
    m_sure_rise = bound_of(1) * (1.0 + 2.0 * guard) / q_less_one;
}

double Acceptance::probability(double current, double candidate, double temperature) {
    if (temperature == 0.0) return 0.0;
    const double base = (candidate - current) * q_less_one / temperature + 1.0;
    return 1.0 / nmk_exact::exact_pow(base, reciprocal_of_q_less_one);
}

bool Acceptance::accepts_exactly(double current, double candidate, double temperature, int draw) {
    return probability(current, candidate, temperature) > draw / double{mlRandom::max_drawn};
}

}  // namespace nmk_ordering
