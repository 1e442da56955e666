// ring_pull: the two ways to the same sums.
#include "ring_pull.h"

#include <exactmath/exact_power.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <typeinfo>

#include "elastic_limits.h"

namespace nmk_ordering {

namespace {

constexpr double no_weight = -std::numeric_limits<double>::infinity();

bool is_plain(const nmkSortItemWithPoint& item) { return typeid(item) == typeid(nmkSortItemLine); }

}  // namespace

RingPuller::RingPuller(nmkSortPointList& items, giPoint3coDynArr& ring_points, double bell_width)
    : ring(ring_points), k(bell_width) {
    while (items.forwards() != 0) {
        auto* item = nmkSortItemWithPoint::ut_dynamic_cast(items.read().item());
        if (item != nullptr) pulling.push_back(item);
    }
}

const RingPull& RingPuller::pull() {
    const auto n = static_cast<std::size_t>(ring.size());
    sums.x.assign(n, 0.0);
    sums.y.assign(n, 0.0);
    if (all_plain()) {
        sweep();
    } else {
        ask_items();
    }
    return sums;
}

// A coordinate that is not finite would turn a left-out zero into something else.
bool RingPuller::all_plain() const {
    for (const nmkSortItemWithPoint* item : pulling) {
        const giPoint3& place = item->ring_part().normal_point;
        if (!is_plain(*item) || !std::isfinite(place.x) || !std::isfinite(place.y)) return false;
    }
    return true;
}

void RingPuller::ask_items() {
    for (nmkSortItemWithPoint* item : pulling) item->set_distance_array(ring, k);
    for (const nmkSortItemWithPoint* item : pulling) {
        for (int j = 0; j < ring.size(); ++j) {
            double dx = 0.0;
            double dy = 0.0;
            item->get_weighted_distance(dx, dy, j, ring[j]);
            sums.x[static_cast<std::size_t>(j)] += dx;
            sums.y[static_cast<std::size_t>(j)] += dy;
        }
    }
}

void RingPuller::sweep() {
    for (const giPoint3& point : ring) {
        ring_x.push_back(point.x);
        ring_y.push_back(point.y);
    }
    exponents.resize(ring_x.size());
    for (nmkSortItemWithPoint* item : pulling) {
        item->ring_part().weight_sum = weigh(*item);
        add_pull_of(*item);
    }
}

// As nmkSortItemWithPoint::set_distance_array, in three passes that the compiler can do well.
double RingPuller::weigh(nmkSortItemWithPoint& item) {
    const std::size_t n = ring_x.size();
    const double x = item.ring_part().normal_point.x;
    const double y = item.ring_part().normal_point.y;
    const double twice_k_squared = (k + k) * k;
    for (std::size_t j = 0; j < n; ++j) {
        const double dx = x - ring_x[j];
        const double dy = y - ring_y[j];
        const double d2 = dx * dx + dy * dy;
        const double exponent = -d2 / twice_k_squared;
        exponents[j] = d2 >= elastic_limits::squared_reach ? no_weight : exponent;
    }
    doublecoDynArr& item_weights = item.ring_part().weights;
    item_weights.resize(ring.size());
    double* const weights = item_weights.array();
    in_reach.clear();
    double sum = 0.0;
    for (std::size_t j = 0; j < n; ++j) {
        weights[j] = 0.0;
        if (exponents[j] < elastic_limits::exponent_of_zero) continue;
        weights[j] = nmk_exact::exact_exp(exponents[j]);
        sum += weights[j];
        in_reach.push_back(static_cast<int>(j));
    }
    return n == 0 || sum < elastic_limits::least_weight_sum ? 1.0 : sum;
}

void RingPuller::add_pull_of(const nmkSortItemWithPoint& item) {
    const auto& part = item.ring_part();
    const double x = part.normal_point.x;
    const double y = part.normal_point.y;
    for (const int near_by : in_reach) {
        const auto j = static_cast<std::size_t>(near_by);
        const double weight = part.weights[near_by];
        sums.x[j] += (x - ring_x[j]) * weight / part.weight_sum;
        sums.y[j] += (y - ring_y[j]) * weight / part.weight_sum;
    }
}

}  // namespace nmk_ordering
