// plain_ways.h: shortest ways around obstacles as they are searched without a limit: what can be
// seen from each corner is found among all corners, and a search may come to each of them.
#pragma once

#include <nmktoolbox/search/nmkAStarSearch.h>
#include <nmktoolbox/search/nmkSearchGoal.h>
#include <nmktoolbox/search/nmkSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "ordering/travel_metrics.h"
#include "ordering/travel_obstacles.h"

namespace plain {

using nmk_ordering::PlanePoint;

constexpr int start_of_way = -1;
constexpr int end_of_way = -2;

/// The corners at which a way may bend, and those that can be seen from each.
class CornerGraph {
  public:
    CornerGraph(const nmk_ordering::TravelObstacles& obstacles,
                const nmk_ordering::TravelMetric& metric)
        : m_obstacles(obstacles), m_metric(metric) {
        const auto& polygons = obstacles.polygons();
        for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon) {
            for (int number = 0; number < polygons[polygon].size(); ++number) {
                if (!polygons[polygon].is_convex_at(number)) continue;
                m_corners.push_back({polygons[polygon].corner(number), polygon, number});
            }
        }
        for (const Corner& from : m_corners) {
            m_seen.push_back(seen_from(from.place));
            std::erase_if(m_seen.back(), [&](int to) {
                const Corner& corner = m_corners[static_cast<std::size_t>(to)];
                return &corner == &from || !is_tangent(corner.place, from);
            });
        }
    }

    std::vector<int> seen_from(const PlanePoint& place) const {
        std::vector<int> seen;
        for (std::size_t i = 0; i < m_corners.size(); ++i) {
            const bool is_seen =
                is_tangent(place, m_corners[i]) && m_obstacles.is_free(place, m_corners[i].place);
            if (is_seen) seen.push_back(static_cast<int>(i));
        }
        return seen;
    }
    const std::vector<int>& seen_from_corner(int number) const {
        return m_seen[static_cast<std::size_t>(number)];
    }
    const PlanePoint& place(int number) const {
        return m_corners[static_cast<std::size_t>(number)].place;
    }
    double cost(const PlanePoint& a, const PlanePoint& b) const {
        return m_metric({a.x, a.y, 0.0}, {b.x, b.y, 0.0});
    }

  private:
    struct Corner {
        PlanePoint place;
        std::size_t polygon;
        int number;
    };

    bool is_tangent(const PlanePoint& from, const Corner& corner) const {
        return m_obstacles.polygons()[corner.polygon].is_tangent(from, corner.number);
    }

    const nmk_ordering::TravelObstacles& m_obstacles;
    nmk_ordering::TravelMetric m_metric;
    std::vector<Corner> m_corners;
    std::vector<std::vector<int>> m_seen;
};

class CornerNode : public nmkSearchNode {
  public:
    CornerNode(const CornerGraph& graph, int number, const PlanePoint& place, const PlanePoint& end)
        : m_graph(graph), m_number(number), m_place(place), m_end(end) {}

    int number() const { return m_number; }
    double min_cost(const nmkSearchNode& other) const override {
        return m_graph.cost(m_place, static_cast<const CornerNode&>(other).m_place);
    }
    double min_cost(const nmkSearchGoal&) const override { return m_graph.cost(m_place, m_end); }

  protected:
    bool is_equal(const nmkSearchNode& other) const override {
        return m_number == static_cast<const CornerNode&>(other).m_number;
    }

  private:
    const CornerGraph& m_graph;
    int m_number;
    PlanePoint m_place, m_end;
};

class CornerGoal : public nmkSearchGoal {
  public:
    bool contains(const nmkSearchNode& node) const override {
        return static_cast<const CornerNode&>(node).number() == end_of_way;
    }
};

class CornerGenerator : public nmkSearchNodeGenerator {
  public:
    CornerGenerator(const CornerGraph& graph, const PlanePoint& from, const PlanePoint& to)
        : m_graph(graph),
          m_to(to),
          m_from_start(graph.seen_from(from)),
          m_to_end(graph.seen_from(to)) {}

    void expand_node(const nmkSearchNode& node,
                     coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const override {
        const int number = static_cast<const CornerNode&>(node).number();
        const bool is_start = number == start_of_way;
        if (!is_start && std::binary_search(m_to_end.begin(), m_to_end.end(), number)) {
            filler.add(std::make_shared<CornerNode>(m_graph, end_of_way, m_to, m_to));
        }
        for (const int seen : is_start ? m_from_start : m_graph.seen_from_corner(number)) {
            filler.add(std::make_shared<CornerNode>(m_graph, seen, m_graph.place(seen), m_to));
        }
    }
    double find_x_value(double x) const override { return x; }

  private:
    const CornerGraph& m_graph;
    PlanePoint m_to;
    std::vector<int> m_from_start, m_to_end;
};

class AcceptAllCorners : public nmkSearchNodeVerifier {
  public:
    nmkSearchNodeVerifierResult verify(const nmkSearchNode&, const nmkSearchNode&) const override {
        return nmkSearchNodeVerifierResult::accepted;
    }
    bool is_in_bounds(const nmkSearchNode&) const override { return true; }
};

/// The places of the way from one place to another that no straight line leads to; empty for none.
inline std::vector<PlanePoint> way_around(const CornerGraph& graph, const PlanePoint& from,
                                          const PlanePoint& to) {
    nmkAStarSearch search(std::make_shared<CornerGenerator>(graph, from, to),
                          std::make_shared<AcceptAllCorners>(),
                          std::make_shared<CornerNode>(graph, start_of_way, from, to),
                          std::make_shared<CornerGoal>());
    std::vector<std::shared_ptr<const nmkSearchNode>> route;
    search.perform(coiFiller_from_container(route));
    std::vector<PlanePoint> places;
    for (const auto& node : route) {
        const int number = static_cast<const CornerNode&>(*node).number();
        places.push_back(number == start_of_way ? from
                         : number == end_of_way ? to
                                                : graph.place(number));
    }
    return places;
}

}  // namespace plain
