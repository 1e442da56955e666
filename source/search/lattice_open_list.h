// lattice_open_list.h: the open list of a search on a lattice.
//
// The entry of the smallest f is first, and among equals the oldest. The cell, which is read for
// every entry that is popped, is stored apart from what is read only where the cell is not closed
// yet: most entries are dropped.
#pragma once

#include <geometry/giPoint2.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "search/lattice.h"
#include "search/score_heap.h"

namespace nmk_search {

class LatticeOpenList {
  public:
    /// How a cell was reached.
    struct Entry {
        giPoint2 point;
        double g;
        std::uint32_t parent;  // the sequence number of a closed cell
    };
    using Slot = std::uint32_t;

    explicit LatticeOpenList(std::uint32_t first_age = 0) : m_next_age(first_age) {}

    bool is_empty() const { return m_heap.is_empty(); }

    /// `f` must not be NaN, and ages_left() not 0.
    void push(LatticeCell cell, const Entry& entry, double f);

    /// The slot of the best entry. It can be read until the next push, also after drop_first.
    Slot first() const { return slot_of(m_heap.first()); }
    void drop_first();

    LatticeCell cell(Slot slot) const { return m_cells[slot]; }
    const Entry& entry(Slot slot) const { return m_entries[slot]; }

    /// The slots of all entries, oldest first.
    std::vector<Slot> slots_by_age() const;

    /// Orders the entries by new scores: `f_of` returns the f of an entry.
    template <class ScoreFunction>
    void score(const ScoreFunction& f_of);

    /// How many entries can be pushed before they must be given new ages.
    std::uint32_t ages_left() const {
        return std::numeric_limits<std::uint32_t>::max() - m_next_age;
    }

    /// Like score; the entries are also numbered anew from age 0, in the order of their old ages.
    template <class ScoreFunction>
    void score_with_new_ages(const ScoreFunction& f_of);

  private:
    static Slot slot_of(std::size_t number) { return static_cast<Slot>(number); }
    Slot take_free_slot();
    void add_to_heap(Slot slot, double f);

    // Age and slot are one number in the heap, the age above.
    static_assert(sizeof(std::size_t) >= 2 * sizeof(Slot));
    ScoreHeap m_heap;
    std::vector<LatticeCell> m_cells;
    std::vector<Entry> m_entries;
    std::vector<Slot> m_free;
    std::uint32_t m_next_age;
};

inline LatticeOpenList::Slot LatticeOpenList::take_free_slot() {
    if (m_free.empty()) {
        m_cells.emplace_back();
        m_entries.emplace_back();
        return static_cast<Slot>(m_entries.size() - 1);
    }
    const Slot slot = m_free.back();
    m_free.pop_back();
    return slot;
}

inline void LatticeOpenList::add_to_heap(Slot slot, double f) {
    m_heap.add(f, std::size_t{m_next_age++} << 32 | slot);
}

inline void LatticeOpenList::push(LatticeCell cell, const Entry& entry, double f) {
    const Slot slot = take_free_slot();
    m_cells[slot] = cell;
    m_entries[slot] = entry;
    add_to_heap(slot, f);
}

inline void LatticeOpenList::drop_first() {
    m_free.push_back(first());
    m_heap.drop_first();
}

inline std::vector<LatticeOpenList::Slot> LatticeOpenList::slots_by_age() const {
    std::vector<std::size_t> numbers = m_heap.numbers();
    std::sort(numbers.begin(), numbers.end());
    std::vector<Slot> slots;
    slots.reserve(numbers.size());
    for (const std::size_t number : numbers) slots.push_back(slot_of(number));
    return slots;
}

template <class ScoreFunction>
void LatticeOpenList::score(const ScoreFunction& f_of) {
    const std::vector<std::size_t> numbers = m_heap.numbers();
    m_heap.clear();
    for (const std::size_t number : numbers) m_heap.add(f_of(m_entries[slot_of(number)]), number);
}

template <class ScoreFunction>
void LatticeOpenList::score_with_new_ages(const ScoreFunction& f_of) {
    const std::vector<Slot> slots = slots_by_age();
    m_heap.clear();
    m_next_age = 0;
    for (const Slot slot : slots) add_to_heap(slot, f_of(m_entries[slot]));
}

}  // namespace nmk_search
