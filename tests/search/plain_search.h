// plain_search.h: best-first search over two plain lists, each walked from the front.
//
// The reference for nmkAStarSearch: the same calls in the same order, the same route. It offers the
// same protected operations, so that one derived class can be put on top of either.
#pragma once

#include <nmktoolbox/search.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace nmk_search::plain {

using NodePointer = std::shared_ptr<const nmkSearchNode>;

class Search {
  public:
    Search(std::shared_ptr<const nmkSearchNodeGenerator> generator,
           std::shared_ptr<const nmkSearchNodeVerifier> verifier, NodePointer start,
           std::shared_ptr<nmkSearchGoal> goal)
        : m_goal(std::move(goal)),
          m_generator(std::move(generator)),
          m_verifier(std::move(verifier)) {
        m_open.push_back(Search::generate_node(std::move(start), nullptr));
    }
    virtual ~Search() = default;

    void set_start(NodePointer start) {
        m_open.clear();
        m_open.push_back(generate_node(std::move(start), nullptr));
    }

    void perform(coiFiller<NodePointer> filler) {
        while (!m_open.empty()) {
            const auto record = find_next_node();
            if (record == nullptr) return;
            if (is_goal(*record)) return reconstuct_route(record, filler);
            expand_node(record);
        }
    }

  protected:
    virtual void expand_node(std::shared_ptr<const nmkAStarSearchNode> record) {
        std::vector<NodePointer> neighbours;
        m_generator->expand_node(*record->node(), coiFiller_from_container(neighbours));
        for (auto& neighbour : neighbours) {
            if (!is_in_visited(*neighbour)) m_open.push_back(generate_node(neighbour, record));
        }
    }

    virtual std::shared_ptr<nmkAStarSearchNode> generate_node(
        NodePointer node, std::shared_ptr<const nmkAStarSearchNode> parent) const {
        return std::make_shared<nmkAStarSearchNode>(std::move(node), std::move(parent), *m_goal);
    }

    virtual bool is_goal(const nmkAStarSearchNode& record) const {
        return m_goal->contains(*record.node());
    }

    bool is_in_visited(const nmkSearchNode& node) const {
        for (const NodePointer& closed : m_visited) {
            if (*closed == node) return true;
        }
        return false;
    }

    void reconstuct_route(std::shared_ptr<const nmkAStarSearchNode> record,
                          coiFiller<NodePointer> filler) const {
        std::vector<NodePointer> route;
        for (; record->parent() != nullptr; record = record->parent()) {
            route.push_back(record->node());
        }
        route.push_back(record->node());
        for (auto node = route.rbegin(); node != route.rend(); ++node) filler.add(*node);
    }

    void update_goal() {
        for (const auto& record : m_open) record->calculate_h(*m_goal);
    }

  private:
    // The placeholder that a verifier receives as the parent of a root.
    class RootParent final : public nmkSearchNode {
      public:
        double min_cost(const nmkSearchNode&) const override { return 0.0; }
        double min_cost(const nmkSearchGoal&) const override { return 0.0; }

      private:
        bool is_equal(const nmkSearchNode&) const override { return false; }
    };

    int verdict(const nmkAStarSearchNode& record) const {
        const auto parent = record.parent();
        const RootParent placeholder;
        const nmkSearchNode& from = parent == nullptr ? placeholder : *parent->node();
        return static_cast<int>(m_verifier->verify(from, *record.node()));
    }

    std::shared_ptr<const nmkAStarSearchNode> find_next_node() {
        while (!m_open.empty()) {
            auto record = pop_best_node();
            if (is_in_visited(*record->node())) continue;
            const int result = verdict(*record);
            if (result == 0 || result == 1) m_visited.push_back(record->node());
            if (result == 0) return record;
        }
        return nullptr;
    }

    std::shared_ptr<const nmkAStarSearchNode> pop_best_node() {
        std::size_t best = 0;
        for (std::size_t i = 1; i < m_open.size(); ++i) {
            if (m_open[i]->f() < m_open[best]->f()) best = i;
        }
        std::shared_ptr<const nmkAStarSearchNode> chosen = m_open[best];
        if (m_goal->overshoot_goal(*chosen->node(), *m_generator)) update_goal();
        m_open.erase(m_open.begin() + static_cast<std::ptrdiff_t>(best));
        return chosen;
    }

    std::shared_ptr<nmkSearchGoal> m_goal;
    std::shared_ptr<const nmkSearchNodeGenerator> m_generator;
    std::shared_ptr<const nmkSearchNodeVerifier> m_verifier;
    std::vector<NodePointer> m_visited;
    std::vector<std::shared_ptr<nmkAStarSearchNode>> m_open;
};

}  // namespace nmk_search::plain
