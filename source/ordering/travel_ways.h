// travel_ways.h: shortest ways around obstacles, over their corners.
//
// A way is searched among the corners that it can reach within a length, which grows until a way is
// found: a corner from which no way of that length leads to both places is on none. So a way costs
// what is near it, however many obstacles there are. What can be seen from a corner is found as far
// as a search looks, and kept; what can be seen from a place is kept for the places of late, and so
// are the ways. A corner counts as seen only where a way may bend: the polygon is convex there and
// the line does not run into it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "travel_metrics.h"
#include "travel_obstacles.h"
#include "travel_way_search.h"

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
    /// The number of ways that were searched so far, those that were kept left out.
    std::int64_t searched() const { return m_searched; }

    static PlanePoint in_plane(const TravelPoint& p) { return plane_point(p.x, p.y); }

    // For the search.

    /// The metric in the plane.
    double cost(const PlanePoint& a, const PlanePoint& b) const {
        return m_metric({a.x, a.y, 0.0}, {b.x, b.y, 0.0});
    }
    const PlanePoint& corner(int number) const { return m_corners[at(number)].place; }
    int corner_count() const { return static_cast<int>(m_corners.size()); }
    /// The corners that can be seen from a corner: all within `reach` of it by the metric, and some
    /// beyond.
    const SeenCorners& seen_from_corner(int number, double reach);

  private:
    struct Corner {
        PlanePoint place;
        int polygon;
        int number;  // in the polygon
        SeenCorners seen;
    };
    struct Place {
        PlanePoint place;
        bool is_known = false;
        SeenCorners seen;
    };
    struct KeptWay {
        PlanePoint from, to;
        bool is_known = false;
        CornersOfWay corners;
    };

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    bool is_tangent(const PlanePoint& from, const Corner& corner) const {
        return m_obstacles.polygons()[at(corner.polygon)].is_tangent(from, corner.number);
    }
    /// Looks from a place as far as `reach`; `is_seen` has the last word on a corner.
    template <class IsSeen>
    void look(const PlanePoint& place, double reach, SeenCorners& seen, const IsSeen& is_seen);
    const SeenCorners& seen_from_place(const PlanePoint& place, double reach);
    KeptWay& kept_way(const PlanePoint& from, const PlanePoint& to);
    CornersOfWay search(const PlanePoint& from, const PlanePoint& to);
    TravelWay along(const TravelPoint& from, const std::vector<int>& corners,
                    const TravelPoint& to) const;

    TravelObstacles m_obstacles;
    TravelMetric m_metric;
    std::vector<Corner> m_corners;             // the convex ones, polygon by polygon
    std::vector<std::size_t> m_first_corners;  // by polygon, and one more
    std::vector<Place> m_places;               // by their coordinates, once there are some
    std::vector<KeptWay> m_ways;               // likewise
    WayScratch m_scratch;
    double m_least_excess = 0.0;
    std::int64_t m_searched = 0;
};

}  // namespace nmk_ordering
