#include "part_lists.h"

#include <ngk/ngk_persistence.h>

namespace nmk_topology {

void StoredParts::write(CArchive& archive) const {
    write_count(archive, m_vertices.parts().size());
    for (const topVertex* vertex : m_vertices.parts()) {
        const giPoint3& point = vertex->point();
        archive << point.x << point.y << point.z << vertex->tolerance();
    }
    write_count(archive, m_edges.parts().size());
    for (const topEdge* edge : m_edges.parts()) {
        archive << edge->curve();
        write(archive, *edge->start());
        write(archive, *edge->end());
    }
}

void StoredParts::add(const topEdge& edge) {
    m_vertices.add(*edge.start());
    m_vertices.add(*edge.end());
    m_edges.add(edge);
}

void StoredParts::add(const topLoop& loop) {
    for (const topEdgeUse& use : loop.uses()) add(*use.edge);
}

void StoredParts::add(const topFace& face) {
    for (const topLoopPtr& loop : face.loops()) add(*loop);
}

LoadedParts::LoadedParts(CArchive& archive) {
    for (std::uint32_t left = archive.ReadCount(); left > 0; --left) {
        giPoint3 point;
        double tolerance = 0.0;
        archive >> point.x >> point.y >> point.z >> tolerance;
        m_vertices.emplace_back(new topVertex(point, tolerance));
        require(m_vertices.back()->is_valid());
    }
    for (std::uint32_t left = archive.ReadCount(); left > 0; --left) {
        ngkCurvePtr3 curve;
        archive >> curve;
        const topVertexPtr& start = read_vertex(archive);
        const topVertexPtr& end = read_vertex(archive);
        m_edges.emplace_back(new topEdge(curve, start, end));
        require(m_edges.back()->is_valid());
    }
}

}  // namespace nmk_topology
