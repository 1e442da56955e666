#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "travel_areas.h"
#include "travel_check.h"
#include "travel_network.h"
#include "travel_ways.h"

namespace {

using nmk_ordering::TravelPoint;
using nmk_ordering::TravelWays;

TravelPoint divided(const giPoint3& p, double unit) { return {p.x / unit, p.y / unit, p.z / unit}; }

}  // namespace

nmkTravelWays::nmkTravelWays(const nmkTravelProblem& problem)
    : m_is_time(problem.measure == nmkTravelMeasure::time) {
    nmkTravelProblem settings;
    settings.measure = problem.measure;
    settings.speed = problem.speed;
    settings.acceleration = problem.acceleration;
    settings.keep_outs = problem.keep_outs;
    m_error = nmk_ordering::fault_of(settings);
    if (!m_error.empty()) settings.keep_outs.clear();
    m_unit = nmk_ordering::unit_of_keep_outs(settings.keep_outs);
    m_ways = std::make_unique<TravelWays>(nmk_ordering::TravelObstacles(settings.keep_outs, m_unit),
                                          nmk_ordering::scaled_metric(settings, m_unit));
    m_areas = std::make_unique<nmk_ordering::TravelAreas>(m_ways->obstacles().polygons());
}

nmkTravelWays::~nmkTravelWays() = default;

std::optional<int> nmkTravelWays::keep_out_at(const giPoint3& place) const {
    return m_ways->obstacles().keep_out_at(TravelWays::in_plane(divided(place, m_unit)));
}

std::optional<int> nmkTravelWays::keep_out_between(const giPoint3& from, const giPoint3& to) const {
    return m_ways->obstacles().keep_out_between(TravelWays::in_plane(divided(from, m_unit)),
                                                TravelWays::in_plane(divided(to, m_unit)));
}

std::optional<int> nmkTravelWays::area_at(const giPoint3& place) const {
    if (keep_out_at(place)) return std::nullopt;
    return m_areas->of(TravelWays::in_plane(divided(place, m_unit)));
}

bool nmkTravelWays::may_be_enclosed(const giPoint3& place) const {
    return m_areas->may_be_enclosed(TravelWays::in_plane(divided(place, m_unit)));
}

std::optional<std::vector<giPoint3>> nmkTravelWays::bends(const giPoint3& from,
                                                          const giPoint3& to) const {
    const std::vector<TravelPoint> places =
        m_ways->way(divided(from, m_unit), divided(to, m_unit)).places;
    if (places.empty()) return std::nullopt;
    std::vector<giPoint3> bends;
    for (std::size_t i = 1; i + 1 < places.size(); ++i) {
        bends.emplace_back(places[i].x * m_unit, places[i].y * m_unit, places[i].z * m_unit);
    }
    return bends;
}

double nmkTravelWays::length(const giPoint3& from, const giPoint3& to) const {
    const double length = m_ways->way(divided(from, m_unit), divided(to, m_unit)).length;
    return m_is_time ? length : length * m_unit;
}
