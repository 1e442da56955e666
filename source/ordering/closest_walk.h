// closest_walk: the order of nmkItemSorterClosest for points, without sorting all of them each
// time.
//
// The sorter is defined by one stable sort of all items for each item taken, by squared distance
// from the one taken before. So of two items the one comes first that is nearer to the latest
// reference point, or if that ties, to the one before it, and so on back to the first, and last the
// one that was added earlier. The walk finds the least by a tree of the points and compares by
// earlier references only where points tie. Items at the same point always tie, and are taken in
// the order in which they were added.
#pragma once

#include <vector>

#include "plan_point_tree.h"

namespace nmk_ordering {

/// Takes points one by one, each time the nearest to the one before.
class ClosestWalk {
  public:
    /// `points` in the order of adding, with finite coordinates; `start` is the first reference.
    ClosestWalk(const std::vector<PlanPoint>& points, const PlanPoint& start);

    /// Takes the next point, which must exist, and returns its position in `points`. The point
    /// becomes the reference.
    int next();

    /// The points left, in the order of the last sort.
    std::vector<int> left() const;

  private:
    // All points with the same coordinates.
    struct Site {
        int begin;  // of its points in `m_members`, in order of adding
        int end;
    };

    void gather_sites(const std::vector<PlanPoint>& points);
    int first_of(std::vector<int>& candidates) const;
    void keep_nearest(const PlanPoint& from, std::vector<int>& candidates) const;
    bool comes_before(int a, int b) const;
    int oldest(int site) const;

    std::vector<PlanPoint> m_coordinates;  // by site
    std::vector<Site> m_sites;
    std::vector<int> m_members;     // positions in `points`, site by site
    std::vector<int> m_site_of;     // by point
    std::vector<PlanPoint> m_past;  // earlier references, the latest last
    PlanPoint m_reference;          // of the next sort
    PlanPointTree m_tree;           // of the sites
    std::vector<int> m_tied;
};

}  // namespace nmk_ordering
