#include "travel_ways.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <utility>

#include "travel_way_search.h"

namespace nmk_ordering {

namespace {

bool is_first(const TravelPoint& a, const TravelPoint& b) {
    return std::tie(a.x, a.y, a.z) < std::tie(b.x, b.y, b.z);
}

std::uint64_t bits_of(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

}  // namespace

TravelWays::TravelWays(TravelObstacles obstacles, const TravelMetric& metric)
    : m_obstacles(std::move(obstacles)), m_metric(metric), m_places(places_kept) {
    const std::vector<TravelPolygon>& polygons = m_obstacles.polygons();
    for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon) {
        for (int number = 0; number < polygons[polygon].size(); ++number) {
            if (!polygons[polygon].is_convex_at(number)) continue;
            m_corners.push_back(
                {polygons[polygon].corner(number), static_cast<int>(polygon), number, false, {}});
        }
    }
}

TravelWays::~TravelWays() = default;

const std::vector<int>& TravelWays::seen_from_corner(int number) {
    Corner& from = m_corners[at(number)];
    if (from.is_known) return from.seen;
    from.is_known = true;
    for (std::size_t i = 0; i < m_corners.size(); ++i) {
        const Corner& to = m_corners[i];
        if (at(number) == i || !is_tangent(from.place, to) || !is_tangent(to.place, from)) continue;
        if (m_obstacles.is_free(from.place, to.place)) from.seen.push_back(static_cast<int>(i));
    }
    return from.seen;
}

const std::vector<int>& TravelWays::seen_from_place(const PlanePoint& place) {
    const std::uint64_t mixed = (bits_of(place.x) ^ (bits_of(place.y) << 1)) * 0x9e3779b97f4a7c15U;
    Place& kept = m_places[(mixed >> 40) % places_kept];
    if (kept.is_known && kept.place == place) return kept.seen;
    kept = {place, true, {}};
    for (std::size_t i = 0; i < m_corners.size(); ++i) {
        if (!is_tangent(place, m_corners[i])) continue;
        if (m_obstacles.is_free(place, m_corners[i].place)) {
            kept.seen.push_back(static_cast<int>(i));
        }
    }
    return kept.seen;
}

// The same way in both directions: it is searched from the lesser place.
TravelWay TravelWays::way(const TravelPoint& from, const TravelPoint& to) {
    if (is_first(to, from)) {
        TravelWay back = way(to, from);
        std::reverse(back.places.begin(), back.places.end());
        return back;
    }
    if (is_straight(from, to)) return {m_metric(from, to), {from, to}};
    const PlanePoint begin = in_plane(from);
    const PlanePoint end = in_plane(to);
    const std::vector<int> seen = seen_from_place(begin);  // the other place may take its room
    const CornersOfWay found = search_corners(*this, begin, end, seen, seen_from_place(end));
    if (!found.exists) return {std::numeric_limits<double>::infinity(), {}};
    return along(from, found.corners, to);
}

TravelWay TravelWays::along(const TravelPoint& from, const std::vector<int>& corners,
                            const TravelPoint& to) const {
    std::vector<double> travelled;  // in the plane, at each corner
    PlanePoint last = in_plane(from);
    double whole = 0.0;
    for (const int number : corners) {
        whole += cost(last, corner(number));
        travelled.push_back(whole);
        last = corner(number);
    }
    whole += cost(last, in_plane(to));
    TravelWay way{0.0, {from}};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PlanePoint& place = corner(corners[i]);
        const double z = from.z + (to.z - from.z) * (travelled[i] / whole);
        way.places.push_back({place.x, place.y, z});
    }
    way.places.push_back(to);
    for (std::size_t i = 1; i < way.places.size(); ++i) {
        way.length += m_metric(way.places[i - 1], way.places[i]);
    }
    return way;
}

}  // namespace nmk_ordering
