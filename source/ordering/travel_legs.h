// travel_legs.h: the lengths of the legs between the points of a network beside keep-outs.
//
// A leg that comes near no keep-out costs the metric. The lengths of the others are kept in a cache
// of fixed size. A new leg may overwrite an older one, whose length is then computed again when it
// is needed; so the size of the cache never changes a result. A search asks for most legs only to
// find that they gain nothing, which the straight line shows already: LegLength::at_least.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "travel_budget.h"
#include "travel_ways.h"

namespace nmk_ordering {

class TravelLegs {
  public:
    /// `points` are those of the network, borrowed.
    TravelLegs(TravelObstacles obstacles, const TravelMetric& metric,
               const std::vector<TravelPoint>& points);

    double cost(int from, int to) {
        const auto a = static_cast<std::size_t>(from);
        const auto b = static_cast<std::size_t>(to);
        return m_ways.obstacles().is_any_near(m_cells[a], m_cells[b])
                   ? remembered(from, to)
                   : m_metric(m_points[a], m_points[b]);
    }
    /// The same for a leg that may come near a keep-out.
    double remembered(int from, int to);
    const PlaneCell& cell(int point) const { return m_cells[static_cast<std::size_t>(point)]; }
    /// Reports each way that is searched to a budget, which is borrowed.
    void set_budget(TravelBudget& budget) { m_budget = &budget; }
    TravelWays& ways() { return m_ways; }
    const TravelObstacles& obstacles() const { return m_ways.obstacles(); }

    /// No leg is longer, but those without a way.
    double upper_bound(const TravelPoint& low, const TravelPoint& high) const;

  private:
    struct Leg {
        int from = -1;
        int to = -1;
        double cost = 0.0;
    };

    TravelMetric m_metric;
    const std::vector<TravelPoint>& m_points;
    TravelWays m_ways;
    std::vector<PlaneCell> m_cells;  // by point
    std::vector<Leg> m_table;        // a power of two of them
    TravelBudget* m_budget = nullptr;
};

/// The metric of a search beside keep-outs. A point has all that a leg which comes near none needs.
template <class Metric>
struct LegLength {
    struct Point {
        typename Metric::Point place;
        PlaneCell cell;
        int node;
    };

    Metric straight;
    TravelLegs* legs = nullptr;

    double operator()(const Point& a, const Point& b) const {
        return legs->obstacles().is_any_near(a.cell, b.cell) ? legs->remembered(a.node, b.node)
                                                             : straight(a.place, b.place);
    }
    /// Not above the length of the leg, however the pieces of its way are rounded.
    double at_least(const Point& a, const Point& b) const {
        constexpr double below_rounding = 1.0 - 1e-12;
        return straight(a.place, b.place) * below_rounding;
    }
};

}  // namespace nmk_ordering
