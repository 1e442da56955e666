#include <nmktoolbox/search/nmkAStarSearch.h>
#include <nmktoolbox/search/nmkAStarSearchNode.h>
#include <nmktoolbox/search/nmkSearchGoal.h>
#include <nmktoolbox/search/nmkSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <cstddef>
#include <typeinfo>
#include <utility>
#include <vector>

#include "search/closed_list.h"
#include "search/local_filler.h"
#include "search/node_lattice_search.h"
#include "search/open_list.h"
#include "search/root_parent.h"

using RouteFiller = coiFiller<std::shared_ptr<const nmkSearchNode>>;

namespace {

constexpr std::size_t neighbour_count = 8;

const nmkSearchNode& parent_of(const nmkAStarSearchNode& record) {
    const auto parent = record.parent();
    return parent == nullptr ? nmk_search::RootParent::instance() : *parent->node();
}

}  // namespace

nmkAStarSearch::nmkAStarSearch(std::shared_ptr<const nmkSearchNodeGenerator> generator,
                               std::shared_ptr<const nmkSearchNodeVerifier> verifier,
                               std::shared_ptr<const nmkSearchNode> start,
                               std::shared_ptr<nmkSearchGoal> goal)
    : m_goal(std::move(goal)),
      m_generator(std::move(generator)),
      m_verifier(std::move(verifier)),
      m_visited(std::make_unique<nmk_search::ClosedList>()),
      m_open(std::make_unique<nmk_search::OpenList>()) {
    // Deliberate: m_start stays empty until set_start.
    m_open->push(nmkAStarSearch::generate_node(std::move(start), nullptr));
}

nmkAStarSearch::~nmkAStarSearch() = default;

void nmkAStarSearch::set_start(std::shared_ptr<const nmkSearchNode> start) {
    if (m_lattice_search != nullptr) leave_lattice();
    m_start = std::move(start);
    m_open->clear();
    // Deliberate: what earlier runs closed stays closed.
    m_open->push(generate_node(m_start, nullptr));
}

// The goal test is made when a node comes out of the open list, never when it is generated.
void nmkAStarSearch::perform(RouteFiller filler) {
    if (m_lattice_search == nullptr) enter_lattice();
    if (m_lattice_search != nullptr && perform_on_lattice(filler)) return;
    while (!m_open->is_empty()) {
        const std::shared_ptr<const nmkAStarSearchNode> record = find_next_node();
        if (record == nullptr) return;
        if (is_goal(*record)) return reconstuct_route(record, filler);
        expand_node(record);
    }
}

// Deliberate: nothing is compared with the open list. A node that is reached from two parents
// is in it twice, and the cheaper record closes it.
void nmkAStarSearch::expand_node(std::shared_ptr<const nmkAStarSearchNode> record) {
    std::vector<std::shared_ptr<const nmkSearchNode>> neighbours;
    neighbours.reserve(neighbour_count);
    nmk_search::LocalFiller sink(neighbours);
    m_generator->expand_node(*record->m_node, sink.filler());
    for (auto& neighbour : neighbours) {
        if (is_in_visited(*neighbour)) continue;
        m_open->push(generate_node(std::move(neighbour), record));
    }
}

std::shared_ptr<nmkAStarSearchNode> nmkAStarSearch::generate_node(
    std::shared_ptr<const nmkSearchNode> node,
    std::shared_ptr<const nmkAStarSearchNode> parent) const {
    return std::make_shared<nmkAStarSearchNode>(std::move(node), std::move(parent), *m_goal);
}

bool nmkAStarSearch::is_goal(const nmkAStarSearchNode& record) const {
    return m_goal->contains(*record.m_node);
}

bool nmkAStarSearch::is_in_visited(const nmkSearchNode& node) const {
    return m_visited->contains(node);
}

void nmkAStarSearch::reconstuct_route(std::shared_ptr<const nmkAStarSearchNode> record,
                                      RouteFiller filler) const {
    std::vector<std::shared_ptr<const nmkSearchNode>> route;
    for (; record->m_parent != nullptr; record = record->m_parent) route.push_back(record->m_node);
    route.push_back(record->m_node);
    for (auto node = route.rbegin(); node != route.rend(); ++node) filler.add(*node);
}

void nmkAStarSearch::update_goal() { m_open->score(*m_goal); }

std::shared_ptr<const nmkAStarSearchNode> nmkAStarSearch::find_next_node() {
    while (!m_open->is_empty()) {
        std::shared_ptr<const nmkAStarSearchNode> record = pop_best_node();
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
    std::shared_ptr<const nmkAStarSearchNode> chosen = (*m_open)[best];
    if (m_goal->overshoot_goal(*chosen->m_node, *m_generator)) {
        // Deliberate: the record chosen before is kept, even where the new scores put another
        // first.
        update_goal();
    }
    m_open->erase(best);
    return chosen;
}

// A derived class may have replaced operations that a search on the lattice would not call.
void nmkAStarSearch::enter_lattice() {
    if (typeid(*this) != typeid(nmkAStarSearch)) return;
    if (m_open->is_empty() || !m_visited->is_empty()) return;
    const std::shared_ptr<const nmkSearchNode> start = (*m_open)[m_open->best()]->m_node;
    m_lattice_search = nmk_search::NodeLatticeSearch::make(m_generator, m_verifier, start, m_goal);
}

// Returns whether the search is over; if not, it continues with the general lists.
bool nmkAStarSearch::perform_on_lattice(RouteFiller& filler) {
    using nmk_search::LatticeStopReason;
    const auto stop = m_lattice_search->run();
    if (stop.reason == LatticeStopReason::left_lattice) {
        const Records records = leave_lattice();
        if (stop.at != nmk_search::NodeLatticeSearch::none) expand_node(records[stop.at]);
        return false;
    }
    if (stop.reason == LatticeStopReason::arrived) {
        // Collected first: the filler may set another start, which deletes m_lattice_search.
        for (auto& node : m_lattice_search->route_to(stop.at)) filler.add(std::move(node));
    }
    return true;
}

// Fills the general lists as they would be if the search had used them from the beginning. Returns
// the records of the closed nodes.
nmkAStarSearch::Records nmkAStarSearch::leave_lattice() {
    using nmk_search::NodeLatticeSearch;
    const NodeLatticeSearch& left = *m_lattice_search;
    Records records;
    const auto record_of = [&](std::shared_ptr<const nmkSearchNode> node,
                               NodeLatticeSearch::SequenceNumber parent) {
        return generate_node(std::move(node),
                             parent == NodeLatticeSearch::none ? nullptr : records[parent]);
    };
    auto visited = std::make_unique<nmk_search::ClosedList>();
    for (const NodeLatticeSearch::Closed& closed : left.closed()) {
        records.push_back(record_of(closed.item, closed.parent));
        visited->add(closed.item);
    }
    auto open = std::make_unique<nmk_search::OpenList>();
    for (const auto& entry : left.open_entries()) {
        open->push(record_of(left.node_of(entry), entry.parent));
    }
    m_visited = std::move(visited);
    m_open = std::move(open);
    m_lattice_search.reset();
    return records;
}
