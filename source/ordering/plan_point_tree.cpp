// plan_point_tree: built by halving; a search takes the nearer half first and skips empty ones.
#include "plan_point_tree.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace nmk_ordering {

namespace {

constexpr int max_points_of_a_leaf = 8;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// Distance from a coordinate to an interval, computed as a difference of coordinates would be.
double outside(double value, double low, double high) {
    if (value < low) return low - value;
    return value > high ? value - high : 0.0;
}

}  // namespace

struct PlanPointTree::Search {
    PlanPoint from;
    std::vector<int>& found;
    double least = std::numeric_limits<double>::infinity();
};

PlanPointTree::PlanPointTree(std::vector<PlanPoint> points)
    : m_points(std::move(points)),
      m_order(m_points.size()),
      m_leaf_of(m_points.size()),
      m_is_removed(m_points.size(), 0) {
    std::iota(m_order.begin(), m_order.end(), 0);
    if (!m_points.empty()) build(0, static_cast<int>(m_points.size()), -1);
}

int PlanPointTree::build(int begin, int end, int parent) {
    PlanPoint low = m_points[at(m_order[at(begin)])];
    PlanPoint high = low;
    for (int i = begin; i < end; ++i) {
        const PlanPoint& point = m_points[at(m_order[at(i)])];
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    const int node = static_cast<int>(m_nodes.size());
    m_nodes.push_back({low, high, begin, end, -1, -1, parent, end - begin});
    if (end - begin > max_points_of_a_leaf) {
        split(node);
    } else {
        for (int i = begin; i < end; ++i) m_leaf_of[at(m_order[at(i)])] = node;
    }
    return node;
}

void PlanPointTree::split(int node) {
    const Node whole = m_nodes[at(node)];
    const bool by_x = whole.high.x - whole.low.x >= whole.high.y - whole.low.y;
    const int middle = whole.begin + (whole.end - whole.begin) / 2;
    std::nth_element(m_order.begin() + whole.begin, m_order.begin() + middle,
                     m_order.begin() + whole.end, [&](int a, int b) {
                         return by_x ? m_points[at(a)].x < m_points[at(b)].x
                                     : m_points[at(a)].y < m_points[at(b)].y;
                     });
    const int left = build(whole.begin, middle, node);
    const int right = build(middle, whole.end, node);
    m_nodes[at(node)].left = left;
    m_nodes[at(node)].right = right;
}

double PlanPointTree::bound_of(int node, const PlanPoint& from) const {
    const Node& box = m_nodes[at(node)];
    const double dx = outside(from.x, box.low.x, box.high.x);
    const double dy = outside(from.y, box.low.y, box.high.y);
    return dx * dx + dy * dy;
}

void PlanPointTree::nearest(const PlanPoint& from, std::vector<int>& found) const {
    found.clear();
    Search whole{from, found};
    if (!m_nodes.empty()) search(0, 0.0, whole);
}

void PlanPointTree::search(int node, double bound, Search& state) const {
    const Node& here = m_nodes[at(node)];
    if (here.count == 0 || bound > state.least) return;
    if (here.left < 0) {
        search_leaf(here, state);
        return;
    }
    int nearer = here.left;
    int farther = here.right;
    double nearer_bound = bound_of(nearer, state.from);
    double farther_bound = bound_of(farther, state.from);
    if (farther_bound < nearer_bound) {
        std::swap(nearer, farther);
        std::swap(nearer_bound, farther_bound);
    }
    search(nearer, nearer_bound, state);
    search(farther, farther_bound, state);
}

void PlanPointTree::search_leaf(const Node& leaf, Search& state) const {
    for (int i = leaf.begin; i < leaf.end; ++i) {
        const int point = m_order[at(i)];
        if (m_is_removed[at(point)] != 0) continue;
        const double distance = squared_distance(m_points[at(point)], state.from);
        if (distance > state.least) continue;
        if (distance < state.least) state.found.clear();
        state.least = distance;
        state.found.push_back(point);
    }
}

void PlanPointTree::remove(int point) {
    m_is_removed[at(point)] = 1;
    for (int node = m_leaf_of[at(point)]; node >= 0; node = m_nodes[at(node)].parent) {
        --m_nodes[at(node)].count;
    }
}

}  // namespace nmk_ordering
