// travel_areas.h: the areas into which obstacles divide the plane, as far as places are asked for.
//
// A polygon alone encloses nothing, and obstacles that do not touch each other enclose nothing
// together that one of them does not enclose alone (Janiszewski's theorem). So a place can be
// enclosed only by a cluster of polygons whose boxes touch, and only if it is in the box of that
// cluster: all other places are in the area around all obstacles, and no way is searched for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "travel_box_tree.h"
#include "travel_ways.h"

namespace nmk_ordering {

class TravelAreas {
  public:
    /// The area around all obstacles; the others are numbered from 1 as they are found.
    static constexpr int around = 0;

    explicit TravelAreas(const std::vector<TravelPolygon>& polygons);

    /// Whether an obstacle may enclose the place; false where that is certain without a search.
    bool may_be_enclosed(const PlanePoint& place) const;
    /// The number of the area of a place that is inside no obstacle: two places have one number
    /// where a way leads from one to the other.
    int of(const PlanePoint& place);
    /// The number of ways that were searched so far.
    std::int64_t searched() const { return m_searched; }

  private:
    struct Cluster {
        PlaneBox box;
        std::vector<std::size_t> polygons;
        std::unique_ptr<TravelWays> ways;  // around its polygons alone, once they are needed
        PlanePoint outside;                // a place in its area 0
        std::vector<PlanePoint> places;    // of each area one, of late
    };

    void add_clusters();
    int area_in(Cluster& cluster, const PlanePoint& place);
    void prepare(Cluster& cluster) const;

    const std::vector<TravelPolygon>& m_polygons;
    std::vector<Cluster> m_clusters;                                  // of two polygons at least
    TravelBoxTree m_tree;                                             // of their boxes
    std::map<std::vector<std::pair<std::size_t, int>>, int> m_areas;  // by cluster and area in it
    std::int64_t m_searched = 0;
};

}  // namespace nmk_ordering
