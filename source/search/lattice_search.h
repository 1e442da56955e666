// lattice_search.h: best-first search over the cells of a lattice.
//
// Cells are closed by column and row, and open entries are kept in arrays. What is searched, and
// what is kept of a closed cell, is up to the class Space:
//
//   Item                         what is kept of a closed cell
//   Axis                         SummedAxis or NumberedAxis
//   leaves_on_nan                whether a score of NaN ends the search, or is taken as infinite
//   columns, rows                the Axis of each
//   directions                   LatticeSteps, the order of the neighbours
//   h(point), is_goal(point)     by the goal as it is now
//   goal_may_move(), move_goal(point)    whether the goal moves, and whether it has moved
//   item_of(cell, entry)         the Item of a cell that is verified next
//   verify(parent, item)         the verdict; parent is null for the start
//   report_closed(item)          false stops the search
#pragma once

#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "search/cell_set.h"
#include "search/lattice.h"
#include "search/lattice_open_list.h"

namespace nmk_search {

enum class LatticeStopReason { arrived, exhausted, stopped, left_lattice };

template <class Space>
class LatticeSearch {
  public:
    using Item = typename Space::Item;
    using Entry = LatticeOpenList::Entry;

    /// Of a closed cell, in the order of closing.
    using SequenceNumber = std::uint32_t;
    static constexpr SequenceNumber none = UINT32_MAX;

    struct Stop {
        LatticeStopReason reason;
        SequenceNumber at;  // the arrival, or a closed cell whose neighbours are not open, or none
    };

    struct Closed {
        Item item;
        SequenceNumber parent;  // or none
    };

    LatticeSearch(Space space, LatticeCell start, const giPoint2& point)
        : m_space(std::move(space)) {
        const Entry entry{point, 0.0, none};
        m_open.push(start, entry, f_of(entry));
    }

    /// Continues with the lists as they are.
    Stop run();

    /// The closed cells, in the order of closing.
    const std::vector<Closed>& closed() const { return m_closed; }

    /// The entries of the open list, oldest first.
    std::vector<Entry> open_entries() const;

    /// The items of the route from the start to a closed cell, in the order of travel.
    std::vector<Item> route_to(SequenceNumber arrival) const;

    const Space& space() const { return m_space; }

  private:
    double f_of(const Entry& entry);
    bool close(LatticeCell cell, const Entry& entry);
    void move_goal(const giPoint2& point);
    bool expand(LatticeCell cell, const Entry& from, SequenceNumber number);
    void keep_ages_for(std::size_t entries);

    Space m_space;
    bool m_has_nan_score = false;
    LatticeOpenList m_open;
    std::vector<Closed> m_closed;
    CellSet m_closed_cells;
};

template <class Space>
typename LatticeSearch<Space>::Stop LatticeSearch<Space>::run() {
    while (!m_open.is_empty()) {
        if (Space::leaves_on_nan && m_has_nan_score) return {LatticeStopReason::left_lattice, none};
        const LatticeOpenList::Slot slot = m_open.first();
        const LatticeCell cell = m_open.cell(slot);
        m_open.drop_first();
        if (m_space.goal_may_move()) move_goal(m_open.entry(slot).point);
        if (m_closed_cells.contains(cell)) continue;
        const Entry entry = m_open.entry(slot);
        if (!close(cell, entry)) continue;
        const auto number = static_cast<SequenceNumber>(m_closed.size() - 1);
        if (!m_space.report_closed(m_closed.back().item)) {
            return {LatticeStopReason::stopped, number};
        }
        if (m_space.is_goal(entry.point)) return {LatticeStopReason::arrived, number};
        if (!expand(cell, entry, number)) return {LatticeStopReason::left_lattice, number};
    }
    return {LatticeStopReason::exhausted, none};
}

template <class Space>
std::vector<typename LatticeSearch<Space>::Entry> LatticeSearch<Space>::open_entries() const {
    std::vector<Entry> entries;
    for (const auto slot : m_open.slots_by_age()) entries.push_back(m_open.entry(slot));
    return entries;
}

template <class Space>
std::vector<typename LatticeSearch<Space>::Item> LatticeSearch<Space>::route_to(
    SequenceNumber arrival) const {
    std::vector<Item> route;
    for (SequenceNumber at = arrival; at != none; at = m_closed[at].parent) {
        route.push_back(m_closed[at].item);
    }
    return {route.rbegin(), route.rend()};
}

template <class Space>
double LatticeSearch<Space>::f_of(const Entry& entry) {
    const double f = m_space.h(entry.point) + entry.g;
    if (!std::isnan(f)) return f;
    m_has_nan_score = true;
    return std::numeric_limits<double>::infinity();
}

// Returns whether the cell was accepted.
template <class Space>
bool LatticeSearch<Space>::close(LatticeCell cell, const Entry& entry) {
    Item item = m_space.item_of(cell, entry);
    const Item* parent = entry.parent == none ? nullptr : &m_closed[entry.parent].item;
    const nmkSearchNodeVerifierResult verdict = m_space.verify(parent, item);
    const bool is_accepted = verdict == nmkSearchNodeVerifierResult::accepted;
    if (!is_accepted && verdict != nmkSearchNodeVerifierResult::refused_for_good) return false;
    m_closed_cells.add(cell);
    m_closed.push_back({std::move(item), entry.parent});
    return is_accepted;
}

// Deliberate: the entry that was popped before stays chosen.
template <class Space>
void LatticeSearch<Space>::move_goal(const giPoint2& point) {
    if (!m_space.move_goal(point)) return;
    m_open.score([this](const Entry& entry) { return f_of(entry); });
}

// Returns false, and opens nothing, where a neighbour would leave the lattice.
template <class Space>
bool LatticeSearch<Space>::expand(LatticeCell cell, const Entry& from, SequenceNumber number) {
    Lines columns;
    Lines rows;
    const auto& directions = m_space.directions;
    if (!m_space.columns.add_neighbours({cell.column, from.point.x}, directions.columns(),
                                        columns) ||
        !m_space.rows.add_neighbours({cell.row, from.point.y}, directions.rows(), rows)) {
        return false;
    }
    keep_ages_for(columns.count() * rows.count());
    for (const Line& column : columns) {
        for (const Line& row : rows) {
            const LatticeCell to{column.number, row.number};
            if (m_closed_cells.contains(to)) continue;  // the cell itself always is
            const giPoint2 point(column.coordinate, row.coordinate);
            const Entry entry{point, point.distance(from.point) + from.g, number};
            m_open.push(to, entry, f_of(entry));
        }
    }
    return true;
}

template <class Space>
void LatticeSearch<Space>::keep_ages_for(std::size_t entries) {
    if (m_open.ages_left() >= entries) return;
    m_open.score_with_new_ages([this](const Entry& entry) { return f_of(entry); });
}

}  // namespace nmk_search
