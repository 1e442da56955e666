// nmkTriBoundary_benchmark: the free edges of a shell of a million triangles whose corners are not
// shared, beside sorting the keys of all edges.
//
// The peer finds the corners that are at exactly the same place with a bare hash, sorts one key an
// edge and counts the keys that come once; ours matches corners within the tolerance as well, and
// keeps the neighbour of each edge. Times are those on a processor.

#include <nmktoolbox/trifile.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <utility>

#include "trifile/bare_mesh.h"
#include "trifile/grid_model.h"

namespace {

constexpr int turns = 5;
constexpr double target = 2.0;

// How many edges are free, and a sum over the places of their ends that no order changes.
struct FreeEdges {
    int count = 0;
    double sum = 0.0;

    bool operator==(const FreeEdges&) const = default;

    void add(const giPoint3& from, const giPoint3& to) {
        ++count;
        sum += from.x + 2.0 * from.y + 4.0 * from.z + 8.0 * to.x + 16.0 * to.y + 32.0 * to.z;
    }
};

FreeEdges visit(giTriBlock& block) {
    nmkTriBoundary boundary(&block);
    FreeEdges edges;
    boundary.visit(
        [](const giPoint3& from, const giPoint3& to, void* data) {
            static_cast<FreeEdges*>(data)->add(from, to);
            return 0;
        },
        &edges);
    return edges;
}

// An edge by the numbers of its places, lower one first; then where it is.
struct Key {
    std::uint64_t places;
    std::int32_t from;  // the corner at which the edge begins
    std::int32_t to;
};

std::vector<Key> keys_of(const giBoxArrPoint3& nodes, const giTriArr& triangles) {
    bare::Mesh places;
    std::vector<std::int32_t> place_of;
    place_of.reserve(static_cast<std::size_t>(nodes.size()));
    for (const giPoint3& node : nodes) {
        place_of.push_back(places.index_of({node.x, node.y, node.z}));
    }
    std::vector<Key> keys;
    keys.reserve(3 * static_cast<std::size_t>(triangles.size()));
    for (const giTriangle& triangle : triangles) {
        for (int k = 0; k < 3; ++k) {
            const std::int32_t from = triangle[k];
            const std::int32_t to = triangle[(k + 1) % 3];
            const auto [low, high] = std::minmax(place_of[static_cast<std::size_t>(from)],
                                                 place_of[static_cast<std::size_t>(to)]);
            keys.push_back(
                {static_cast<std::uint64_t>(low) << 32 | static_cast<std::uint32_t>(high), from,
                 to});
        }
    }
    return keys;
}

FreeEdges sort_keys(const giTriBlock& block) {
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    block.get(nodes);
    block.get(triangles);
    std::vector<Key> keys = keys_of(*nodes, *triangles);
    std::sort(keys.begin(), keys.end(),
              [](const Key& a, const Key& b) { return a.places < b.places; });
    FreeEdges edges;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const bool is_alone = (i == 0 || keys[i - 1].places != keys[i].places) &&
                              (i + 1 == keys.size() || keys[i + 1].places != keys[i].places);
        if (is_alone) edges.add((*nodes)[keys[i].from], (*nodes)[keys[i].to]);
    }
    return edges;
}

bool measure(const char* what, const std::vector<grid_model::Facet>& facets) {
    const std::unique_ptr<giTriBlock> block = grid_model::unshared_block(facets);
    const auto taken = stopwatch::processor_in_turns(
        turns, [&] { return visit(*block); }, [&] { return sort_keys(*block); });
    const bool same = taken.same && sort_keys(*block).count == 4 * grid_model::side;
    return stopwatch::report(what, taken.ours, taken.peer, target, same);
}

}  // namespace

int main() {
    std::printf("%-44s %11s %11s %9s\n", "name", "ours_s", "peer_s", "ratio");
    bool reached = measure("free edges, a grid of 1e6", grid_model::facets());
    reached &= measure("free edges, 1e6 shuffled", grid_model::shuffled_facets());
    return reached ? 0 : 1;
}
