// part_lists: the vertices and edges below a part, each once, and by number.
#pragma once

#include <mfc/archive_values.h>
#include <topology/topShell.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace nmk_topology {

using nmk_mfc::read_flag;
using nmk_mfc::refuse;
using nmk_mfc::require;
using nmk_mfc::write_count;
using nmk_mfc::write_flag;

/// Numbers from 0, in the order in which parts are first met.
template <class Part>
class Numbering {
  public:
    void add(const Part& part) {
        if (m_numbers.emplace(&part, m_parts.size()).second) m_parts.push_back(&part);
    }
    std::size_t number_of(const Part& part) const { return m_numbers.at(&part); }
    const std::vector<const Part*>& parts() const noexcept { return m_parts; }

  private:
    std::unordered_map<const Part*, std::size_t> m_numbers;
    std::vector<const Part*> m_parts;
};

/// Of a part that is stored.
class StoredParts {
  public:
    explicit StoredParts(const topVertex& vertex) { m_vertices.add(vertex); }
    explicit StoredParts(const topEdge& edge) { add(edge); }
    explicit StoredParts(const topLoop& loop) { add(loop); }
    explicit StoredParts(const topFace& face) { add(face); }
    explicit StoredParts(const topShell& shell) {
        for (const topFacePtr& face : shell.faces()) add(*face);
    }

    /// All vertices and edges.
    void write(CArchive& archive) const;

    /// The number of one of them.
    void write(CArchive& archive, const topVertex& vertex) const {
        write_count(archive, m_vertices.number_of(vertex));
    }
    void write(CArchive& archive, const topEdge& edge) const {
        write_count(archive, m_edges.number_of(edge));
    }

  private:
    void add(const topEdge& edge);
    void add(const topLoop& loop);
    void add(const topFace& face);

    Numbering<topVertex> m_vertices;
    Numbering<topEdge> m_edges;
};

/// Of a part that is loaded.
class LoadedParts {
  public:
    /// Reads all vertices and edges.
    explicit LoadedParts(CArchive& archive);

    /// The one whose number comes next.
    const topVertexPtr& read_vertex(CArchive& archive) const { return next(archive, m_vertices); }
    const topEdgePtr& read_edge(CArchive& archive) const { return next(archive, m_edges); }

  private:
    template <class Handle>
    static const Handle& next(CArchive& archive, const std::vector<Handle>& handles) {
        const std::uint32_t number = archive.ReadCount();
        require(number < handles.size());
        return handles[number];
    }

    std::vector<topVertexPtr> m_vertices;
    std::vector<topEdgePtr> m_edges;
};

}  // namespace nmk_topology
