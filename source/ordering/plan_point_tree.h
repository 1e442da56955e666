// place_tree: the nearest of many places in the plan, while they are taken away one by one.
//
// A k-d tree with a bounding box and a count of what is left in each node. Every answer is exact,
// to the bit: distances are the same sums of squares that a plain scan computes, and the bound of
// a box is computed by the same steps, each of which rounds monotonically, so that no place that
// ties for the least is ever passed over. Coordinates must be finite.
#pragma once

#include <cstddef>
#include <vector>

namespace nmk_ordering {

/// A place in the plan.
struct Place {
    double x;
    double y;
};

/// The squared plan distance, as the comparisons of nmkItemSortMethods compute it.
inline double squared_distance(const Place& a, const Place& b) {
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return dx * dx + dy * dy;
}

/// Places that can be removed; each is known by its position in the array given.
class PlaceTree {
  public:
    explicit PlaceTree(std::vector<Place> all_places);

    /// Replaces `found` by every place left that has the least squared distance from `from`.
    void nearest(const Place& from, std::vector<int>& found) const;

    /// Takes a place away; it must be left.
    void remove(int place);

  private:
    struct Node {
        Place low, high;  // box of all its places, taken away or not
        int begin, end;   // its range of `order`
        int left, right;  // its children, -1 in a leaf
        int parent;
        int count;  // places left
    };
    struct Search;

    int build(int begin, int end, int parent);
    void split(int node);
    void search(int node, double bound, Search& search) const;
    void search_leaf(const Node& leaf, Search& search) const;
    double bound_of(int node, const Place& from) const;

    std::vector<Place> places;
    std::vector<int> order;
    std::vector<Node> nodes;
    std::vector<int> leaf_of;
    std::vector<char> taken;
};

}  // namespace nmk_ordering
