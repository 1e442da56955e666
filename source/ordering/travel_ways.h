// travel_ways.h: shortest ways around obstacles, over their corners.
//
// The corners that can be seen from a corner are found when a search first comes there, and kept;
// those seen from a place are kept for the places of late. A corner counts as seen only where a way
// may bend: the polygon is convex there and the line does not run into it.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "travel_metrics.h"
#include "travel_obstacles.h"

namespace nmk_ordering {

struct TravelWay {
    double length = 0.0;              // in the metric; infinite where there is no way
    std::vector<TravelPoint> places;  // from start to end; empty where there is no way
};

class TravelWays {
  public:
    TravelWays(TravelObstacles obstacles, const TravelMetric& metric);
    TravelWays(const TravelWays&) = delete;
    TravelWays& operator=(const TravelWays&) = delete;
    ~TravelWays();

    const TravelObstacles& obstacles() const { return m_obstacles; }

    bool is_straight(const TravelPoint& from, const TravelPoint& to) const {
        return m_obstacles.is_free(in_plane(from), in_plane(to));
    }
    /// The shortest way between two places outside all obstacles.
    TravelWay way(const TravelPoint& from, const TravelPoint& to);

    static PlanePoint in_plane(const TravelPoint& p) { return plane_point(p.x, p.y); }

    // For the search.

    /// The metric in the plane.
    double cost(const PlanePoint& a, const PlanePoint& b) const {
        return m_metric({a.x, a.y, 0.0}, {b.x, b.y, 0.0});
    }
    const PlanePoint& corner(int number) const { return m_corners[at(number)].place; }
    const std::vector<int>& seen_from_corner(int number);

  private:
    struct Corner {
        PlanePoint place;
        int polygon;
        int number;  // in the polygon
        bool is_known = false;
        std::vector<int> seen;
    };
    struct Place {
        PlanePoint place;
        bool is_known = false;
        std::vector<int> seen;
    };

    static constexpr std::size_t places_kept = 4096;

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    bool is_tangent(const PlanePoint& from, const Corner& corner) const {
        return m_obstacles.polygons()[at(corner.polygon)].is_tangent(from, corner.number);
    }
    const std::vector<int>& seen_from_place(const PlanePoint& place);
    TravelWay along(const TravelPoint& from, const std::vector<int>& corners,
                    const TravelPoint& to) const;

    TravelObstacles m_obstacles;
    TravelMetric m_metric;
    std::vector<Corner> m_corners;  // the convex ones
    std::vector<Place> m_places;    // by their coordinates
};

}  // namespace nmk_ordering
