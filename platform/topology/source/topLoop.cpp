#include <topology/topLoop.h>

#include <algorithm>

namespace {

bool are_joined(const std::vector<topEdgeUse>& uses) {
    topVertexPtr last = uses.back().end();
    return std::ranges::all_of(uses, [&](const topEdgeUse& use) {
        const bool joins = use.start() == last;
        last = use.end();
        return joins;
    });
}

}  // namespace

topLoop::topLoop(std::vector<topEdgeUse> uses) : m_uses(std::move(uses)) {
    const bool has_edges =
        !m_uses.empty() && std::ranges::all_of(m_uses, [](const topEdgeUse& use) {
            return use.edge && use.edge->is_valid();
        });
    set_valid(has_edges && are_joined(m_uses));
}
