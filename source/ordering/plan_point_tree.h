// plan_point_tree: the nearest of many points in the plan, while they are removed one by one.
//
// A k-d tree with a bounding box and a count of the points left in each node. Every result is
// exact, to the bit: distances are the same sums of squares that a plain scan computes, and the
// bound of a box is computed by the same steps, each of which rounds monotonically, so that no
// point that ties for the least distance is missed. Coordinates must be finite.
#pragma once

#include <cstddef>
#include <vector>

namespace nmk_ordering {

/// A point in the plan.
struct PlanPoint {
    double x;
    double y;
};

/// The squared plan distance, as the comparisons of nmkItemSortMethods compute it.
inline double squared_distance(const PlanPoint& a, const PlanPoint& b) {
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return dx * dx + dy * dy;
}

/// Points that can be removed; each is identified by its position in the array given.
class PlanPointTree {
  public:
    explicit PlanPointTree(std::vector<PlanPoint> points);

    /// Sets `found` to every point left that has the least squared distance from `from`.
    void nearest(const PlanPoint& from, std::vector<int>& found) const;

    /// Removes a point, which must be left.
    void remove(int point);

  private:
    struct Node {
        PlanPoint low, high;  // box of all its points, removed or not
        int begin, end;       // its range of `m_order`
        int left, right;      // its children, -1 in a leaf
        int parent;
        int count;  // points left
    };
    struct Search;

    int build(int begin, int end, int parent);
    void split(int node);
    void search(int node, double bound, Search& state) const;
    void search_leaf(const Node& leaf, Search& state) const;
    double bound_of(int node, const PlanPoint& from) const;

    std::vector<PlanPoint> m_points;
    std::vector<int> m_order;
    std::vector<Node> m_nodes;
    std::vector<int> m_leaf_of;
    std::vector<char> m_is_removed;
};

}  // namespace nmk_ordering
