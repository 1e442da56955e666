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

RingPuller::RingPuller(nmkSortPointList& items, giPoint3coDynArr& ring, double k)
    : m_ring(ring), m_k(k) {
    while (items.forwards() != 0) {
        auto* item = nmkSortItemWithPoint::ut_dynamic_cast(items.read().item());
        if (item != nullptr) m_items.push_back(item);
    }
}

const RingPull& RingPuller::pull() {
    const auto n = static_cast<std::size_t>(m_ring.size());
    m_sums.x.assign(n, 0.0);
    m_sums.y.assign(n, 0.0);
    if (all_plain()) {
        pull_by_arrays();
    } else {
        pull_by_items();
    }
    return m_sums;
}

// With a coordinate that is not finite, a skipped zero weight would have given NaN.
bool RingPuller::all_plain() const {
    for (const nmkSortItemWithPoint* item : m_items) {
        const giPoint3& point = item->ring_part().normal_point;
        if (!is_plain(*item) || !std::isfinite(point.x) || !std::isfinite(point.y)) return false;
    }
    return true;
}

void RingPuller::pull_by_items() {
    for (nmkSortItemWithPoint* item : m_items) item->set_distance_array(m_ring, m_k);
    for (const nmkSortItemWithPoint* item : m_items) {
        for (int j = 0; j < m_ring.size(); ++j) {
            double dx = 0.0;
            double dy = 0.0;
            item->get_weighted_distance(dx, dy, j, m_ring[j]);
            m_sums.x[static_cast<std::size_t>(j)] += dx;
            m_sums.y[static_cast<std::size_t>(j)] += dy;
        }
    }
}

void RingPuller::pull_by_arrays() {
    for (const giPoint3& point : m_ring) {
        m_ring_x.push_back(point.x);
        m_ring_y.push_back(point.y);
    }
    m_exponents.resize(m_ring_x.size());
    for (nmkSortItemWithPoint* item : m_items) {
        item->ring_part().weight_sum = weigh(*item);
        add_pull_of(*item);
    }
}

// As nmkSortItemWithPoint::set_distance_array, in passes that the compiler can vectorise.
double RingPuller::weigh(nmkSortItemWithPoint& item) {
    const std::size_t n = m_ring_x.size();
    const double x = item.ring_part().normal_point.x;
    const double y = item.ring_part().normal_point.y;
    const double twice_k_squared = (m_k + m_k) * m_k;
    std::vector<double>& exponents = m_exponents;
    for (std::size_t j = 0; j < n; ++j) {
        const double dx = x - m_ring_x[j];
        const double dy = y - m_ring_y[j];
        const double d2 = dx * dx + dy * dy;
        const double exponent = -d2 / twice_k_squared;
        exponents[j] = d2 >= elastic_limits::squared_reach ? no_weight : exponent;
    }
    doublecoDynArr& item_weights = item.ring_part().weights;
    item_weights.resize(m_ring.size());
    double* const weights = item_weights.array();
    m_in_reach.clear();
    double sum = 0.0;
    for (std::size_t j = 0; j < n; ++j) {
        weights[j] = 0.0;
        if (exponents[j] < elastic_limits::exponent_of_zero) continue;
        weights[j] = nmk_exact::exact_exp(exponents[j]);
        sum += weights[j];
        m_in_reach.push_back(static_cast<int>(j));
    }
    return n == 0 || sum < elastic_limits::min_weight_sum ? 1.0 : sum;
}

void RingPuller::add_pull_of(const nmkSortItemWithPoint& item) {
    const auto& part = item.ring_part();
    const double x = part.normal_point.x;
    const double y = part.normal_point.y;
    for (const int near_point : m_in_reach) {
        const auto j = static_cast<std::size_t>(near_point);
        const double weight = part.weights[near_point];
        m_sums.x[j] += (x - m_ring_x[j]) * weight / part.weight_sum;
        m_sums.y[j] += (y - m_ring_y[j]) * weight / part.weight_sum;
    }
}

}  // namespace nmk_ordering
