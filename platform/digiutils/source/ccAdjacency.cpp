#include <digiutils/ccAdjacency.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <numbers>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "EdgePairs.h"
#include "PlaceIds.h"

namespace {

using nmk_digiutils::EdgeOfTriangle;
using nmk_digiutils::EdgePair;
using nmk_digiutils::Leaf;

constexpr double radians_in_a_degree = std::numbers::pi / 180.0;

// The edges of all triangles, those of one lower node beside each other.
struct EdgeTable {
    std::vector<EdgeOfTriangle> edges;
    std::vector<std::size_t> ends;  // behind the edges of each lower node
};

// Finds the links of one block.
class LinkFinder {
  public:
    LinkFinder(const giBoxArrPoint3& nodes, const giTriArr& triangles, double angle)
        : m_nodes(nodes), m_triangles(triangles), m_angle(angle) {}

    // `ids` has the number of the place of each node.
    void find(const std::vector<std::int32_t>& ids, giLinkArr& links) {
        links.clear();
        if (m_triangles.size() > 0) links[m_triangles.size() - 1] = giLink();
        EdgeTable table = table_of(ids, links);
        std::size_t begin = 0;
        for (std::size_t low = 0; low < table.ends.size(); ++low) {
            const std::size_t end = table.ends[low];
            link_edges_of_node(std::span(table.edges).subspan(begin, end - begin), links);
            begin = end;
        }
    }

  private:
    // -1 where the index is outside the block.
    static std::int32_t place_of(std::int32_t node, const std::vector<std::int32_t>& ids) {
        const bool is_inside = node >= 0 && static_cast<std::size_t>(node) < ids.size();
        return is_inside ? ids[static_cast<std::size_t>(node)] : -1;
    }

    // Calls work(low, edge) for each edge whose ends have places, where `low` is the lower of both.
    template <class Work>
    void for_each_edge(const std::vector<std::int32_t>& ids, const Work& work) const {
        for (int i = 0; i < m_triangles.size(); ++i) {
            const giTriangle& triangle = m_triangles[i];
            for (int k = 0; k < 3; ++k) {
                const std::int32_t from = place_of(triangle[k], ids);
                const std::int32_t to = place_of(triangle[(k + 1) % 3], ids);
                if (from < 0 || to < 0) continue;
                work(std::min(from, to),
                     EdgeOfTriangle{std::max(from, to), i, static_cast<std::int8_t>(k),
                                    static_cast<std::int8_t>(from < to ? 1 : 0)});
            }
        }
    }

    EdgeTable table_of(const std::vector<std::int32_t>& ids, giLinkArr& links) const {
        std::vector<std::size_t> at(ids.size() + 1);
        for_each_edge(ids, [&](std::int32_t low, const EdgeOfTriangle& edge) {
            // An edge within one place is linked to its own triangle.
            if (edge.other != low) {
                ++at[static_cast<std::size_t>(low) + 1];
            } else {
                links[edge.triangle][edge.edge] = edge.triangle;
            }
        });
        std::partial_sum(at.begin(), at.end(), at.begin());
        EdgeTable table;
        table.edges.resize(at.back());
        at.pop_back();
        for_each_edge(ids, [&](std::int32_t low, const EdgeOfTriangle& edge) {
            if (edge.other != low) table.edges[at[static_cast<std::size_t>(low)]++] = edge;
        });
        table.ends = std::move(at);
        return table;
    }

    void link_edges_of_node(std::span<EdgeOfTriangle> edges, giLinkArr& links) const {
        std::sort(edges.begin(), edges.end(), [](const EdgeOfTriangle& a, const EdgeOfTriangle& b) {
            return std::tie(a.other, a.triangle, a.edge) < std::tie(b.other, b.triangle, b.edge);
        });
        std::size_t begin = 0;
        while (begin < edges.size()) {
            std::size_t end = begin + 1;
            while (end < edges.size() && edges[end].other == edges[begin].other) ++end;
            link_one_edge(edges.subspan(begin, end - begin), links);
            begin = end;
        }
    }

    // The triangles that share one edge.
    void link_one_edge(std::span<const EdgeOfTriangle> edges, giLinkArr& links) const {
        if (edges.size() < 2) return;
        if (edges.size() > 2) {
            link_many(edges, links);
        } else if (edges[0].is_forward != edges[1].is_forward) {
            link(edges[0], edges[1], links);
        }
    }

    void link_many(std::span<const EdgeOfTriangle> edges, giLinkArr& links) const {
        const EdgeOfTriangle& first = edges.front();
        const giTriangle& triangle = m_triangles[first.triangle];
        const giPoint3* low = &node_of(triangle, first.edge);
        const giPoint3* high = &node_of(triangle, first.edge + 1);
        if (first.is_forward == 0) std::swap(low, high);
        std::vector<Leaf> leaves;
        leaves.reserve(edges.size());
        for (std::size_t i = 0; i < edges.size(); ++i) {
            const giPoint3& third = node_of(m_triangles[edges[i].triangle], edges[i].edge + 2);
            leaves.push_back({nmk_digiutils::angle_about_edge(*low, *high, third),
                              static_cast<int>(i), edges[i].is_forward != 0});
        }
        for (const EdgePair& pair : nmk_digiutils::pair_leaves(std::move(leaves), m_angle)) {
            link(edges[static_cast<std::size_t>(pair.first)],
                 edges[static_cast<std::size_t>(pair.second)], links);
        }
    }

    const giPoint3& node_of(const giTriangle& triangle, int corner) const {
        return m_nodes[triangle[corner % 3]];
    }

    static void link(const EdgeOfTriangle& a, const EdgeOfTriangle& b, giLinkArr& links) {
        links[a.triangle][a.edge] = b.triangle;
        links[b.triangle][b.edge] = a.triangle;
    }

    const giBoxArrPoint3& m_nodes;
    const giTriArr& m_triangles;
    double m_angle;  // radians
};

std::vector<std::int32_t> own_ids(int count) {
    std::vector<std::int32_t> ids(static_cast<std::size_t>(count));
    std::iota(ids.begin(), ids.end(), 0);
    return ids;
}

}  // namespace

ccAdjacency::ccAdjacency(const coFeaturePool& source, coFeaturePool& target, int by_index,
                         int is_replacing, double angle)
    : m_source(source),
      m_target(target),
      m_is_by_index(by_index),
      m_is_replacing(is_replacing),
      m_angle(angle) {}

nmADJ_ERROR ccAdjacency::create_adjacency(double tolerance) {
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    giLinkArrcoFeature links;
    if (m_source.get(nodes) == 0 || m_source.get(triangles) == 0) return nmADJ_NO_TRIANGLES;
    if (m_target.get(links) != 0 && m_is_replacing == 0) return nmADJ_OK;
    m_target.remove(links);
    m_target.add(links);
    try {
        const std::vector<std::int32_t> ids = m_is_by_index != 0
                                                  ? own_ids(nodes->size())
                                                  : nmk_digiutils::place_ids(*nodes, tolerance);
        LinkFinder(*nodes, *triangles, m_angle * radians_in_a_degree).find(ids, *links);
    } catch (const std::bad_alloc&) {
        m_target.remove(links);
        return nmADJ_NO_MEMORY;
    }
    return nmADJ_OK;
}
