#include <topology/topFace.h>

#include <algorithm>

topFace::topFace(const ngkSurfPtr& surface, bool is_reversed, std::vector<topLoopPtr> loops)
    : m_surface(surface), m_is_reversed(is_reversed), m_loops(std::move(loops)) {
    set_valid(surface && surface->is_valid() &&
              std::ranges::all_of(m_loops,
                                  [](const topLoopPtr& loop) { return loop && loop->is_valid(); }));
}
