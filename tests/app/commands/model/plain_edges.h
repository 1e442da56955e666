// plain_edges.h: the edges of a model in an ordered map, the plain way to count them.
#pragma once

#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "model_samples.h"

namespace nmk_model {

struct PlainEdges {
    using Place = std::array<double, 3>;

    struct Uses {
        int upwards = 0;
        int downwards = 0;
        std::vector<std::size_t> triangles;
    };

    explicit PlainEdges(const std::vector<model_samples::Corners>& facets) {
        for (std::size_t i = 0; i < facets.size(); ++i) add(facets[i], i);
        count_shells(facets.size());
    }

    std::set<Place> places;
    std::map<std::pair<Place, Place>, Uses> edges;
    int free_edges = 0, crowded = 0, opposed = 0, shells = 0;
    bool is_closed = true;

  private:
    void add(const model_samples::Corners& facet, std::size_t index) {
        const Place corners[3] = {{facet[0], facet[1], facet[2]},
                                  {facet[3], facet[4], facet[5]},
                                  {facet[6], facet[7], facet[8]}};
        places.insert(corners, corners + 3);
        if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0]) {
            return;
        }
        for (int k = 0; k < 3; ++k) {
            const Place& from = corners[k];
            const Place& to = corners[(k + 1) % 3];
            Uses& uses = edges[std::minmax(from, to)];
            ++(from < to ? uses.upwards : uses.downwards);
            uses.triangles.push_back(index);
        }
    }

    /// Colours the triangles, and paints over until no edge has two colours.
    void count_shells(std::size_t triangles) {
        std::vector<std::size_t> colour(triangles);
        for (std::size_t i = 0; i < triangles; ++i) colour[i] = i;
        std::set<std::size_t> with_edges;
        for (bool is_painted = true; is_painted;) {
            is_painted = false;
            for (const auto& [ends, uses] : edges) {
                for (const std::size_t triangle : uses.triangles) {
                    std::size_t& first = colour[uses.triangles.front()];
                    is_painted = is_painted || first != colour[triangle];
                    first = colour[triangle] = std::min(first, colour[triangle]);
                }
            }
        }
        for (const auto& [ends, uses] : edges) {
            const int all = uses.upwards + uses.downwards;
            free_edges += all == 1 ? 1 : 0;
            crowded += all > 2 ? 1 : 0;
            opposed += all == 2 && uses.upwards != 1 ? 1 : 0;
            is_closed = is_closed && uses.upwards == uses.downwards;
            for (const std::size_t triangle : uses.triangles) with_edges.insert(colour[triangle]);
        }
        shells = static_cast<int>(with_edges.size());
        is_closed = is_closed && !edges.empty();
    }
};

}  // namespace nmk_model
