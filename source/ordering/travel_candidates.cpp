#include "travel_candidates.h"

#include <algorithm>
#include <utility>

namespace nmk_ordering {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

bool has(const TravelNeighbours& neighbours, int node, int other) {
    return std::any_of(neighbours.begin(node), neighbours.end(node),
                       [&](const TravelNeighbour& to) { return to.node == other; });
}

}  // namespace

void TravelNeighbours::sort(std::size_t first, std::size_t last) {
    std::stable_sort(
        all.begin() + static_cast<std::ptrdiff_t>(first),
        all.begin() + static_cast<std::ptrdiff_t>(last),
        [](const TravelNeighbour& a, const TravelNeighbour& b) { return a.cost < b.cost; });
}

void make_mutual(TravelNeighbours& neighbours) {
    std::vector<std::vector<TravelNeighbour>> missing(at(neighbours.nodes()));
    for (int node = 0; node < neighbours.nodes(); ++node) {
        for (const TravelNeighbour* to = neighbours.begin(node); to != neighbours.end(node); ++to) {
            if (!has(neighbours, to->node, node)) missing[at(to->node)].push_back({to->cost, node});
        }
    }
    TravelNeighbours mutual;
    for (int node = 0; node < neighbours.nodes(); ++node) {
        const std::size_t first = mutual.all.size();
        mutual.begins.push_back(first);
        mutual.all.insert(mutual.all.end(), neighbours.begin(node), neighbours.end(node));
        mutual.all.insert(mutual.all.end(), missing[at(node)].begin(), missing[at(node)].end());
        mutual.sort(first, mutual.all.size());
    }
    mutual.begins.push_back(mutual.all.size());
    neighbours = std::move(mutual);
}

}  // namespace nmk_ordering
