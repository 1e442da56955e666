#include <topology/topShell.h>

#include <algorithm>
#include <unordered_map>

namespace {

/// How often loops run through an edge.
struct Uses {
    int forwards = 0;
    int backwards = 0;
};

std::unordered_map<const topEdge*, Uses> count_uses(const std::vector<topFacePtr>& faces) {
    std::unordered_map<const topEdge*, Uses> counts;
    for (const topFacePtr& face : faces) {
        for (const topLoopPtr& loop : face->loops()) {
            for (const topEdgeUse& use : loop->uses()) {
                Uses& count = counts[use.edge.get()];
                ++(use.is_reversed ? count.backwards : count.forwards);
            }
        }
    }
    return counts;
}

}  // namespace

topShell::topShell(std::vector<topFacePtr> faces) : m_faces(std::move(faces)) {
    const bool has_faces = !m_faces.empty() && std::ranges::all_of(m_faces, [](const auto& face) {
        return face && face->is_valid();
    });
    if (!has_faces) return;
    const auto counts = count_uses(m_faces);
    set_valid(std::ranges::all_of(counts, [](const auto& edge) {
        return edge.second.forwards <= 1 && edge.second.backwards <= 1;
    }));
    m_is_closed = is_valid() && std::ranges::all_of(counts, [](const auto& edge) {
                      return edge.second.forwards == edge.second.backwards;
                  });
}
