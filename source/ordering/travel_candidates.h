// travel_candidates.h: the neighbours that each node of a cell may be joined to.
#pragma once

#include <cstddef>
#include <vector>

namespace nmk_ordering {

/// A neighbour and what the way to it costs.
struct TravelNeighbour {
    double cost;
    int node;
};

/// The neighbours of all nodes, those of least cost first.
struct TravelNeighbours {
    std::vector<TravelNeighbour> all;
    std::vector<std::size_t> begins;  // by node, and one more

    int nodes() const { return static_cast<int>(begins.size()) - 1; }
    const TravelNeighbour* begin(int node) const { return all.data() + begins[at(node)]; }
    const TravelNeighbour* end(int node) const { return begin(node + 1); }
    int count(int node) const { return static_cast<int>(end(node) - begin(node)); }

    /// Sorts neighbours of one node, those from `first` to before `last`, by cost.
    void sort(std::size_t first, std::size_t last);

  private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
};

/// Makes each node a neighbour of its neighbours.
void make_mutual(TravelNeighbours& neighbours);

}  // namespace nmk_ordering
