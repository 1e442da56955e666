// closest_walk: the order of nmkItemSorterClosest for points, without sorting everything each time.
//
// The sorter is defined by one stable sort of all items for each item taken, by squared distance
// from the one taken before. So of two items the one comes first that is nearer to the latest
// reference point, or if that ties, to the one before it, and so on back to the first, and last the
// one that was added earlier. The walk finds the least by a tree of places and looks back through
// the references only where places tie. Items at one place tie for ever, and take turns by age.
#pragma once

#include <vector>

#include "place_tree.h"

namespace nmk_ordering {

/// Takes points one by one, each time the nearest to the one before.
class ClosestWalk {
  public:
    /// `points` in the order of adding, with finite coordinates; `start` is the first reference.
    ClosestWalk(const std::vector<Place>& points, const Place& start);

    /// Takes the next point, which must exist, and answers its position in `points`. The point
    /// becomes the reference.
    int next();

    /// The points left, in the order in which the sorts so far have put them.
    std::vector<int> left() const;

  private:
    struct Site {
        int begin;  // of its points in `members`, in order of adding
        int end;
    };

    void gather_sites(const std::vector<Place>& points);
    int first_of(std::vector<int>& tied) const;
    void keep_nearest(const Place& reference, std::vector<int>& tied) const;
    bool stands_before(int a, int b) const;
    int oldest(int site) const;

    std::vector<Place> places;  // of the sites
    std::vector<Site> sites;    // places without repetition
    std::vector<int> members;   // positions in `points`, site by site
    std::vector<int> site_of;   // for each point
    std::vector<Place> passed;  // references the items left have been sorted by
    Place reference;            // what the next sort goes by
    PlaceTree tree;
    std::vector<int> tied;
};

}  // namespace nmk_ordering
