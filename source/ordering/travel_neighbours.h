// travel_neighbours.h: the nearest neighbours of points by any metric of travel_metrics.h.
//
// A k-d tree over the points in an array, halved by the wider side of each box. The bound of a box
// is the metric to the nearest point of it, since a metric grows with the difference on each axis.
#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "travel_metrics.h"

namespace nmk_ordering {

template <class Metric>
class TravelTree {
  public:
    struct Found {
        double cost;
        int point;

        bool operator<(const Found& other) const {
            return cost != other.cost ? cost < other.cost : point < other.point;
        }
    };

    /// `points` is borrowed.
    TravelTree(const Metric& metric, const std::vector<TravelPoint>& points, int count)
        : m_metric(metric), m_points(points), m_order(static_cast<std::size_t>(count)) {
        std::iota(m_order.begin(), m_order.end(), 0);
        if (count > 0) build(0, count);
    }

    /// A part of the plane: both sides of a point in x and in y.
    struct Quadrant {
        bool is_right = false;
        bool is_upper = false;
    };

    /// Sets `found` to the nearest `limit` points that `accepts` takes, by cost and then by number.
    template <class Accepts>
    void nearest(int from, int limit, const Accepts& accepts, std::vector<Found>& found) const {
        const auto reaches = [](const Box&) { return true; };
        search_all(from, limit, accepts, reaches, found);
    }

    /// The same in one quadrant around `from`.
    template <class Accepts>
    void nearest_in(const Quadrant& quadrant, int from, int limit, const Accepts& accepts,
                    std::vector<Found>& found) const {
        const TravelPoint& p = m_points[at(from)];
        const auto is_in = [&](int other) {
            const TravelPoint& q = m_points[at(other)];
            return (q.x >= p.x) == quadrant.is_right && (q.y >= p.y) == quadrant.is_upper &&
                   accepts(other);
        };
        const auto reaches = [&](const Box& box) {
            return (quadrant.is_right ? box.high.x >= p.x : box.low.x < p.x) &&
                   (quadrant.is_upper ? box.high.y >= p.y : box.low.y < p.y);
        };
        search_all(from, limit, is_in, reaches, found);
    }

  private:
    static constexpr int max_points_of_a_leaf = 6;

    struct Box {
        TravelPoint low, high;
        int begin, end;
        int right;  // the left child is the next box; -1 in a leaf
    };

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    int build(int begin, int end) {
        Box box{m_points[at(m_order[at(begin)])], {}, begin, end, -1};
        box.high = box.low;
        for (int i = begin; i < end; ++i) widen(box, m_points[at(m_order[at(i)])]);
        const int number = static_cast<int>(m_boxes.size());
        m_boxes.push_back(box);
        if (end - begin > max_points_of_a_leaf) {
            const int middle = begin + (end - begin) / 2;
            halve(box, begin, middle, end);
            build(begin, middle);
            const int right = build(middle, end);
            m_boxes[at(number)].right = right;
        }
        return number;
    }

    static void widen(Box& box, const TravelPoint& p) {
        box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y), std::min(box.low.z, p.z)};
        box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y),
                    std::max(box.high.z, p.z)};
    }

    void halve(const Box& box, int begin, int middle, int end) {
        int axis = 0;
        for (int other = 1; other < 3; ++other) {
            const double side = coordinate(box.high, other) - coordinate(box.low, other);
            if (side > coordinate(box.high, axis) - coordinate(box.low, axis)) axis = other;
        }
        std::nth_element(m_order.begin() + begin, m_order.begin() + middle, m_order.begin() + end,
                         [&](int a, int b) {
                             const double first = coordinate(m_points[at(a)], axis);
                             const double second = coordinate(m_points[at(b)], axis);
                             return first != second ? first < second : a < b;
                         });
    }

    double bound(const Box& box, const TravelPoint& from) const {
        const TravelPoint nearest{std::clamp(from.x, box.low.x, box.high.x),
                                  std::clamp(from.y, box.low.y, box.high.y),
                                  std::clamp(from.z, box.low.z, box.high.z)};
        return m_metric(Metric::point(from), Metric::point(nearest));
    }

    template <class Accepts, class Reaches>
    void search_all(int from, int limit, const Accepts& accepts, const Reaches& reaches,
                    std::vector<Found>& found) const {
        found.clear();
        if (!m_boxes.empty() && limit > 0) {
            search(0, m_points[at(from)], static_cast<std::size_t>(limit), accepts, reaches, found);
        }
        std::sort(found.begin(), found.end());
    }

    template <class Accepts, class Reaches>
    void search(int number, const TravelPoint& from, std::size_t limit, const Accepts& accepts,
                const Reaches& reaches, std::vector<Found>& found) const {
        const Box& box = m_boxes[at(number)];
        if (!reaches(box)) return;
        if (box.right < 0) {
            search_leaf(box, from, limit, accepts, found);
            return;
        }
        int nearer = number + 1;
        int farther = box.right;
        double nearer_bound = bound(m_boxes[at(nearer)], from);
        double farther_bound = bound(m_boxes[at(farther)], from);
        if (farther_bound < nearer_bound) {
            std::swap(nearer, farther);
            std::swap(nearer_bound, farther_bound);
        }
        const auto is_near = [&](double cost) {
            return found.size() < limit || cost < found.front().cost;
        };
        if (is_near(nearer_bound)) search(nearer, from, limit, accepts, reaches, found);
        if (is_near(farther_bound)) search(farther, from, limit, accepts, reaches, found);
    }

    // `found` is a heap whose first is the farthest.
    template <class Accepts>
    void search_leaf(const Box& leaf, const TravelPoint& from, std::size_t limit,
                     const Accepts& accepts, std::vector<Found>& found) const {
        for (int i = leaf.begin; i < leaf.end; ++i) {
            const int point = m_order[at(i)];
            const double cost = m_metric(Metric::point(from), Metric::point(m_points[at(point)]));
            const Found candidate{cost, point};
            if (found.size() == limit && !(candidate < found.front())) continue;
            if (!accepts(point)) continue;
            if (found.size() == limit) {
                std::pop_heap(found.begin(), found.end());
                found.pop_back();
            }
            found.push_back(candidate);
            std::push_heap(found.begin(), found.end());
        }
    }

    Metric m_metric;
    const std::vector<TravelPoint>& m_points;
    std::vector<int> m_order;
    std::vector<Box> m_boxes;
};

}  // namespace nmk_ordering
