#include "travel_legs.h"

#include <algorithm>
#include <utility>

namespace nmk_ordering {

namespace {

// A search asks for some dozens of legs at each point again and again.
constexpr std::size_t slots_of_a_point = 32;
constexpr std::size_t min_slots = 1024;
constexpr std::size_t max_slots = std::size_t{1} << 22U;

}  // namespace

TravelLegs::TravelLegs(TravelObstacles obstacles, const TravelMetric& metric,
                       const std::vector<TravelPoint>& points)
    : m_metric(metric), m_points(points), m_ways(std::move(obstacles), metric) {
    m_cells.reserve(points.size());
    for (const TravelPoint& p : points) {
        m_cells.push_back(this->obstacles().cell_of(TravelWays::in_plane(p)));
    }
    const std::size_t wanted = std::min(slots_of_a_point * points.size(), max_slots);
    std::size_t slots = min_slots;
    while (slots < wanted) slots *= 2;
    m_table.resize(slots);
}

double TravelLegs::remembered(int from, int to) {
    if (from > to) std::swap(from, to);
    const std::uint64_t key = (static_cast<std::uint64_t>(from) << 32U) +
                              static_cast<std::uint64_t>(static_cast<std::uint32_t>(to));
    const std::uint64_t mixed = key * 0x9e3779b97f4a7c15U;
    Leg& leg = m_table[(mixed >> 32U) & (m_table.size() - 1)];
    if (leg.from == from && leg.to == to) return leg.cost;
    const TravelPoint& a = m_points[static_cast<std::size_t>(from)];
    const TravelPoint& b = m_points[static_cast<std::size_t>(to)];
    const std::int64_t searched = m_ways.searched();
    leg = {from, to, m_ways.way(a, b).length};
    if (m_budget != nullptr && m_ways.searched() > searched) m_budget->search();
    return leg.cost;
}

// A way need not be longer than the straight line with the whole outlines of all obstacles. Where
// each piece is a move of its own the time is at most that of as many equal pieces as there are
// corners, since it grows the less the longer a move is.
double TravelLegs::upper_bound(const TravelPoint& low, const TravelPoint& high) const {
    const PlanePoint around = obstacles().perimeter();
    const TravelPoint way{high.x - low.x + around.x, high.y - low.y + around.y, high.z - low.z};
    if (m_metric.measure != nmkTravelMeasure::time) {
        return ChebyshevLength()(way, {}) + SpaceLength()(way, {});
    }
    double pieces = 1.0;
    for (const TravelPolygon& polygon : obstacles().polygons()) pieces += polygon.size();
    double sum = 0.0;
    for (const TravelPoint& axis :
         {TravelPoint{way.x / pieces, 0.0, 0.0}, TravelPoint{0.0, way.y / pieces, 0.0},
          TravelPoint{0.0, 0.0, way.z / pieces}}) {
        sum += pieces * m_metric(axis, {});
    }
    return sum;
}

}  // namespace nmk_ordering
