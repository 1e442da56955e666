#include <nmktoolbox/search/nmkAStarSearch.h>
#include <nmktoolbox/search/nmkAStarSearchNode.h>
#include <nmktoolbox/search/nmkSearchGoal.h>
#include <nmktoolbox/search/nmkSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "search/block_cache.h"
#include "search/closed_list.h"
#include "search/local_filler.h"
#include "search/open_list.h"

using Route_filler = coiFiller<std::shared_ptr<const nmkSearchNode>>;

namespace {

constexpr std::size_t usual_neighbours = 8;

// What a verifier is given for the parent of a root.
class No_node final : public nmkSearchNode {
  public:
    double min_cost(const nmkSearchNode&) const override { return 0.0; }
    double min_cost(const nmkSearchGoal&) const override { return 0.0; }

  private:
    bool is_equal(const nmkSearchNode&) const override { return false; }
};

// As many of the nodes as there is room for.
void seek_all(const nmk_search::Closed_list& closed,
              std::span<const std::shared_ptr<const nmkSearchNode>> nodes,
              std::span<nmk_search::Closed_list::Sought> sought) {
    const std::size_t count = std::min(nodes.size(), sought.size());
    for (std::size_t i = 0; i < count; ++i) sought[i] = closed.seek(*nodes[i]);
}

const nmkSearchNode& parent_of(const nmkAStarSearchNode& record) {
    static const No_node none;
    const auto parent = record.parent();
    return parent == nullptr ? none : *parent->node();
}

}  // namespace

nmkAStarSearch::nmkAStarSearch(std::shared_ptr<const nmkSearchNodeGenerator> generator,
                               std::shared_ptr<const nmkSearchNodeVerifier> verifier,
                               std::shared_ptr<const nmkSearchNode> start,
                               std::shared_ptr<nmkSearchGoal> goal)
    : m_goal(std::move(goal)),
      m_generator(std::move(generator)),
      m_verifier(std::move(verifier)),
      m_visited(std::make_unique<nmk_search::Closed_list>()),
      m_open(std::make_unique<nmk_search::Open_list>()) {
    // Deliberate: m_start stays empty until set_start.
    m_open->push(nmkAStarSearch::generate_node(std::move(start), nullptr));
}

nmkAStarSearch::~nmkAStarSearch() = default;

void nmkAStarSearch::set_start(std::shared_ptr<const nmkSearchNode> start) {
    m_start = std::move(start);
    m_open->clear();
    // Deliberate: what earlier runs closed stays closed.
    m_open->push(generate_node(m_start, nullptr));
}

// The goal test is made when a node comes out of the open list, never when it is generated.
void nmkAStarSearch::perform(Route_filler filler) {
    while (!m_open->is_empty()) {
        const std::shared_ptr<const nmkAStarSearchNode> record = find_next_node();
        if (record == nullptr) return;
        if (is_goal(*record)) return reconstuct_route(record, filler);
        expand_node(record);
    }
}

// Deliberate: nothing is compared with the open list. A place that is reached by two parents
// stands there twice, and the cheaper record closes it.
void nmkAStarSearch::expand_node(std::shared_ptr<const nmkAStarSearchNode> record) {
    std::vector<std::shared_ptr<const nmkSearchNode>> neighbours;
    neighbours.reserve(usual_neighbours);
    nmk_search::Local_filler sink(neighbours);
    m_generator->expand_node(*record->m_node, sink.filler());
    std::array<nmk_search::Closed_list::Sought, usual_neighbours> sought;
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
        const std::size_t turn = i % usual_neighbours;
        if (turn == 0) seek_all(*m_visited, std::span(neighbours).subspan(i), sought);
        if (m_visited->contains(sought[turn])) continue;
        m_open->push(generate_node(std::move(neighbours[i]), record));
    }
}

std::shared_ptr<nmkAStarSearchNode> nmkAStarSearch::generate_node(
    std::shared_ptr<const nmkSearchNode> node,
    std::shared_ptr<const nmkAStarSearchNode> parent) const {
    return nmk_search::make_shared_in_block<nmkAStarSearchNode>(std::move(node), std::move(parent),
                                                                *m_goal);
}

bool nmkAStarSearch::is_goal(const nmkAStarSearchNode& record) const {
    return m_goal->contains(*record.m_node);
}

bool nmkAStarSearch::is_in_visited(const nmkSearchNode& node) const {
    return m_visited->contains(node);
}

void nmkAStarSearch::reconstuct_route(std::shared_ptr<const nmkAStarSearchNode> record,
                                      Route_filler filler) const {
    std::vector<std::shared_ptr<const nmkSearchNode>> route;
    for (; record->m_parent != nullptr; record = record->m_parent) route.push_back(record->m_node);
    route.push_back(record->m_node);
    for (auto node = route.rbegin(); node != route.rend(); ++node) filler.add(*node);
}

void nmkAStarSearch::update_goal() { m_open->score(*m_goal); }

std::shared_ptr<const nmkAStarSearchNode> nmkAStarSearch::find_next_node() {
    while (!m_open->is_empty()) {
        const std::shared_ptr<const nmkAStarSearchNode> record = pop_best_node();
        if (is_in_visited(*record->m_node)) continue;
        switch (m_verifier->verify(parent_of(*record), *record->m_node)) {
            case nmkSearchNodeVerifierResult::accepted:
                m_visited->add(record->m_node);
                return record;
            case nmkSearchNodeVerifierResult::refused_for_good:
                m_visited->add(record->m_node);
                break;
            default:
                break;  // another parent may still lead here
        }
    }
    return nullptr;
}

std::shared_ptr<const nmkAStarSearchNode> nmkAStarSearch::pop_best_node() {
    if (m_open->is_empty()) return nullptr;
    const std::size_t best = m_open->best();
    const std::shared_ptr<const nmkAStarSearchNode> chosen = (*m_open)[best];
    if (m_goal->overshoot_goal(*chosen->m_node, *m_generator)) {
        // Deliberate: the choice stands, even where the new scores would put another first.
        update_goal();
    }
    m_open->erase(best);
    return chosen;
}
