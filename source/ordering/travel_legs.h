// travel_legs.h: the lengths of the legs between the points of a network beside keep-outs.
//
// A leg that comes near no keep-out costs the metric. The lengths of the others are kept in a cache
// of fixed size. A new leg may overwrite an older one, whose length is then computed again when it
// is needed; so the size of the cache never changes a result.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

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

    double remembered(int from, int to);

    TravelMetric m_metric;
    const std::vector<TravelPoint>& m_points;
    TravelWays m_ways;
    std::vector<PlaneCell> m_cells;  // by point
    std::vector<Leg> m_table;        // a power of two of them
};

/// The metric of a search beside keep-outs: its points are the numbers of nodes.
struct LegLength {
    using Point = int;
    TravelLegs* legs = nullptr;
    double operator()(int a, int b) const { return legs->cost(a, b); }
};

}  // namespace nmk_ordering
