#include "ordering/anneal_acceptance.h"

#include <exactmath/exact_power.h>

#include "ordering/anneal_draw.h"
#include "ordering/anneal_schedule.h"

#include <limits>

namespace nmk_ordering {
namespace {

// The argument of the power at which the probability falls to that of `draw`, less 1.
double bound_of(int draw) {
    // With draw 0 any probability above zero will do: until the power passes the largest double.
    const double power =
        draw == 0 ? std::numeric_limits<double>::max() : largest_draw / static_cast<double>(draw);
    return nmk_exact::exact_pow(power, 1.0 / reciprocal_of_q_less_one) - 1.0;
}

}  // namespace

const double Acceptance::scale = q_less_one;

const Acceptance& Acceptance::table() {
    static const Acceptance only_one;
    return only_one;
}

Acceptance::Acceptance() : bounds(largest_draw + 1) {
    for (int draw = 0; draw <= largest_draw; ++draw) {
        bounds[static_cast<std::size_t>(draw)] = static_cast<float>(bound_of(draw));
    }
    sure_rise = bound_of(1) * (1.0 + 2.0 * guard) / scale;
}

double Acceptance::probability(double current, double candidate, double temperature) {
    if (temperature == 0.0) return 0.0;
    const double base = (candidate - current) * q_less_one / temperature + 1.0;
    return 1.0 / nmk_exact::exact_pow(base, reciprocal_of_q_less_one);
}

bool Acceptance::accepts_exactly(double current, double candidate, double temperature, int draw) {
    return probability(current, candidate, temperature) > draw / double{largest_draw};
}

}  // namespace nmk_ordering
