#include "travel_ways.h"

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace nmk_ordering {

namespace {

// Of late, kept for the next ways.
constexpr std::size_t places_kept = std::size_t{1} << 12U;
constexpr std::size_t ways_kept = std::size_t{1} << 15U;
// By how much a way may be longer than the straight line at first, as a part of that and of the
// diagonal of all obstacles, and by what that is multiplied until a way is found.
constexpr double first_excess = 0.125;
constexpr double least_excess_in_diagonals = 1.0 / 256.0;
constexpr double excess_growth = 4.0;
// How much farther than asked for it is looked, so that the next search need not look again.
constexpr double looked_farther = 1.25;
// Added to the reach within boxes: rounding may not leave out a corner that is within.
constexpr double reach_of_boxes = 1.0 + 1e-9;

bool is_first(const TravelPoint& a, const TravelPoint& b) {
    return std::tie(a.x, a.y, a.z) < std::tie(b.x, b.y, b.z);
}

std::uint64_t mixed(std::uint64_t word, double value) {
    std::uint64_t bits = 0;
    value += 0.0;  // one zero of the two
    std::memcpy(&bits, &value, sizeof bits);
    word = (word ^ bits) * 0x9e3779b97f4a7c15U;
    return word ^ (word >> 29U);
}

std::uint64_t mixed(std::uint64_t word, const PlanePoint& p) {
    return mixed(mixed(word, p.x), p.y);
}

// The place of a box that is nearest to another place.
PlanePoint nearest_of(const PlaneBox& box, const PlanePoint& p) {
    return {std::clamp(p.x, box.low.x, box.high.x), std::clamp(p.y, box.low.y, box.high.y)};
}

}  // namespace

TravelWays::TravelWays(TravelObstacles obstacles, const TravelMetric& metric)
    : m_obstacles(std::move(obstacles)), m_metric(metric) {
    const std::vector<TravelPolygon>& polygons = m_obstacles.polygons();
    for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon) {
        m_first_corners.push_back(m_corners.size());
        for (int number = 0; number < polygons[polygon].size(); ++number) {
            if (!polygons[polygon].is_convex_at(number)) continue;
            m_corners.push_back(
                {polygons[polygon].corner(number), static_cast<int>(polygon), number, {}});
        }
    }
    m_first_corners.push_back(m_corners.size());
    m_scratch = WayScratch(m_corners.size() + 1);
    const PlaneBox& box = m_obstacles.box();
    m_least_excess = std::max(cost(box.low, box.high) * least_excess_in_diagonals,
                              std::numeric_limits<double>::min());
}

TravelWays::~TravelWays() = default;

template <class IsSeen>
void TravelWays::look(const PlanePoint& place, double reach, SeenCorners& seen,
                      const IsSeen& is_seen) {
    if (seen.is_all || reach <= seen.reach) return;
    const double farther = reach * looked_farther;
    seen.is_all = true;
    const auto is_near = [&](const PlaneBox& box) {
        const bool is_within = cost(place, nearest_of(box, place)) <= farther * reach_of_boxes;
        seen.is_all = seen.is_all && is_within;
        return is_within;
    };
    const auto look_at = [&](std::size_t polygon) {
        for (std::size_t i = m_first_corners[polygon]; i < m_first_corners[polygon + 1]; ++i) {
            const double length = cost(place, m_corners[i].place);
            seen.is_all = seen.is_all && length <= farther;
            if (length > farther || length <= seen.reach || !is_seen(i)) continue;
            seen.corners.push_back(static_cast<int>(i));
        }
        return false;
    };
    m_obstacles.tree().visit_where(is_near, look_at);
    std::sort(seen.corners.begin(), seen.corners.end());
    seen.reach = farther;
}

const SeenCorners& TravelWays::seen_from_corner(int number, double reach) {
    Corner& from = m_corners[at(number)];
    look(from.place, reach, from.seen, [&](std::size_t i) {
        const Corner& to = m_corners[i];
        return &to != &from && is_tangent(from.place, to) && is_tangent(to.place, from) &&
               m_obstacles.is_free(from.place, to.place);
    });
    return from.seen;
}

const SeenCorners& TravelWays::seen_from_place(const PlanePoint& place, double reach) {
    if (m_places.empty()) m_places.resize(places_kept);
    Place& kept = m_places[(mixed(0, place) >> 32U) % places_kept];
    if (!kept.is_known || !(kept.place == place)) kept = {place, true, {}};
    look(place, reach, kept.seen, [&](std::size_t i) {
        return is_tangent(place, m_corners[i]) && m_obstacles.is_free(place, m_corners[i].place);
    });
    return kept.seen;
}

TravelWays::KeptWay& TravelWays::kept_way(const PlanePoint& from, const PlanePoint& to) {
    if (m_ways.empty()) m_ways.resize(ways_kept);
    KeptWay& kept = m_ways[(mixed(mixed(0, from), to) >> 32U) % ways_kept];
    if (!kept.is_known || !(kept.from == from) || !(kept.to == to)) {
        kept = {from, to, true, search(from, to)};
    }
    return kept;
}

CornersOfWay TravelWays::search(const PlanePoint& from, const PlanePoint& to) {
    ++m_searched;
    const double straight = cost(from, to);
    double excess = std::max(straight * first_excess, m_least_excess);
    for (;; excess *= excess_growth) {
        const double limit = straight + excess;
        const SeenCorners seen = seen_from_place(from, limit);  // the other may take its room
        CornersOfWay found =
            search_corners(*this, from, to, seen, seen_from_place(to, limit), limit, m_scratch);
        if (found.exists || !found.is_cut) return found;
    }
}

// The same way in both directions: it is searched from the lesser place.
TravelWay TravelWays::way(const TravelPoint& from, const TravelPoint& to) {
    if (is_first(to, from)) {
        TravelWay back = way(to, from);
        std::reverse(back.places.begin(), back.places.end());
        return back;
    }
    if (is_straight(from, to)) return {m_metric(from, to), {from, to}};
    const CornersOfWay& found = kept_way(in_plane(from), in_plane(to)).corners;
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
