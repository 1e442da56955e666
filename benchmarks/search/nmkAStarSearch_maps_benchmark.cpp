// Benchmark: the longest scenarios of two grid maps, 8 neighbours, beside Boost.Graph's
// astar_search on a graph of the same cells and steps.
//
// Both know the map before the clock starts, the one as a verifier, the other as an adjacency list,
// and both use the distance to the goal as their lower bound. The lengths must agree. Without the
// maps, or without Boost, nothing is measured, and the program says so and ends with 1.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "search/grid_search.h"
#include "stopwatch.h"

#ifdef NMK_WITH_BOOST_GRAPH
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/astar_search.hpp>

namespace {

namespace grid = nmk_search::grid;

using Graph =
    boost::adjacency_list<boost::vecS, boost::vecS, boost::undirectedS, boost::no_property,
                          boost::property<boost::edge_weight_t, double>>;
using Vertex = boost::graph_traits<Graph>::vertex_descriptor;

Graph graph_of(const grid::Map& map) {
    const grid::StepRule rule{map, true};
    Graph graph(static_cast<std::size_t>(map.width * map.height));
    for (int y = 0; y < map.height; ++y) {
        for (int x = 0; x < map.width; ++x) {
            if (!map.is_open(x, y)) continue;
            for (const grid::Cell step : {grid::Cell{1, 0}, {-1, 1}, {0, 1}, {1, 1}}) {
                const grid::Cell to{x + step.x, y + step.y};
                if (!rule.allows({x, y}, to)) continue;
                boost::add_edge(map.number({x, y}), map.number(to), std::hypot(step.x, step.y),
                                graph);
            }
        }
    }
    return graph;
}

class Distance : public boost::astar_heuristic<Graph, double> {
  public:
    Distance(const grid::Map& map, grid::Cell goal) : m_width(map.width), m_goal(goal) {}
    double operator()(Vertex vertex) const {
        const int x = static_cast<int>(vertex) % m_width;
        const int y = static_cast<int>(vertex) / m_width;
        const double dx = x - m_goal.x;
        const double dy = y - m_goal.y;
        return std::sqrt(dx * dx + dy * dy);
    }

  private:
    int m_width;
    grid::Cell m_goal;
};

struct Arrived {};

class StopAt : public boost::default_astar_visitor {
  public:
    explicit StopAt(Vertex goal) : m_goal(goal) {}
    void examine_vertex(Vertex vertex, const Graph&) const {
        if (vertex == m_goal) throw Arrived();
    }

  private:
    Vertex m_goal;
};

double peer_length(const grid::Map& map, const Graph& graph, const grid::Scenario& scenario) {
    std::vector<Vertex> parents(boost::num_vertices(graph));
    std::vector<double> lengths(boost::num_vertices(graph));
    const Vertex goal = map.number(scenario.goal);
    try {
        boost::astar_search(graph, map.number(scenario.start), Distance(map, scenario.goal),
                            boost::predecessor_map(parents.data())
                                .distance_map(lengths.data())
                                .visitor(StopAt(goal)));
    } catch (const Arrived&) {
        return lengths[goal];
    }
    return -1.0;
}

bool measure(const char* name) {
    const std::string path = std::string(NMK_SHARED_DATA_DIR "/maps/") + name + ".map";
    const grid::Map map = grid::read_map(path);
    if (map.rows.empty()) return std::printf("NOT MEASURED: no %s\n", path.c_str()), false;
    auto scenarios = grid::read_scenarios(path + ".scen");
    const auto longest = stopwatch::size(5, 1);
    scenarios.erase(scenarios.begin(), scenarios.end() - longest);
    const Graph graph = graph_of(map);
    const auto verifier = grid::cutting_verifier(map);
    const grid::StepRule rule{map, true};
    double ours = 0.0, peer = 0.0;
    bool same = true;
    for (const grid::Scenario& s : scenarios) {
        std::vector<grid::Cell> cells;
        double length = 0.0;
        ours +=
            stopwatch::least_seconds(3, [&] { cells = grid::route(verifier, s.start, s.goal); });
        peer += stopwatch::least_seconds(3, [&] { length = peer_length(map, graph, s); });
        same = same && std::abs(grid::length_of(cells, rule) - length) < 1e-8;
    }
    const std::string title = std::string("A-star, the longest of ") + name;
    return stopwatch::report(title.c_str(), ours, peer, 1.6, same);
}

}  // namespace

int main() {
    const bool reached = measure("random512-10-0");
    return measure("maze512-32-0") && reached ? 0 : 1;
}
#else
int main() {
    std::puts("NOT MEASURED: built without Boost.Graph");
    return 1;
}
#endif
