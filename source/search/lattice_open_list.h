// lattice_open_list.h: the records of a search on a lattice that wait to be popped.
//
// The smallest f is first, and among equals the oldest. What is looked at for every record that is
// popped stands apart from what is needed only where its place is not closed yet: most are dropped.
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
    /// How a place was reached.
    struct Way {
        giPoint2 point;
        double g;
        std::uint32_t parent;  // the number of a closed place
    };
    using Slot = std::uint32_t;

    explicit LatticeOpenList(std::uint32_t first_age = 0) : m_next_age(first_age) {}

    bool is_empty() const { return m_heap.is_empty(); }

    /// `f` must be a number. There must be an age left.
    void push(LatticeCell place, const Way& way, double f);

    /// The best record. Its slot is not used again before the next push.
    Slot first() const { return slot_of(m_heap.first()); }
    void drop_first();

    LatticeCell place(Slot slot) const { return m_places[slot]; }
    const Way& way(Slot slot) const { return m_ways[slot]; }

    /// The slots of all records, oldest first.
    std::vector<Slot> slots_by_age() const;

    /// Puts every record where the f that `f_of` answers for its way belongs.
    template <class ScoreFunction>
    void score(const ScoreFunction& f_of);

    /// How many records can be pushed before there must be new ages.
    std::uint32_t ages_left() const {
        return std::numeric_limits<std::uint32_t>::max() - m_next_age;
    }

    /// Scores every record, and gives them the first ages, in the order of their old ones.
    template <class ScoreFunction>
    void score_with_new_ages(const ScoreFunction& f_of);

  private:
    static Slot slot_of(std::size_t number) { return static_cast<Slot>(number); }
    Slot free_slot();
    void file(Slot slot, double f);

    // Age and slot are one number in the heap, the age above.
    static_assert(sizeof(std::size_t) >= 2 * sizeof(Slot));
    ScoreHeap m_heap;
    std::vector<LatticeCell> m_places;
    std::vector<Way> m_ways;
    std::vector<Slot> m_free;
    std::uint32_t m_next_age;
};

inline LatticeOpenList::Slot LatticeOpenList::free_slot() {
    if (m_free.empty()) {
        m_places.emplace_back();
        m_ways.emplace_back();
        return static_cast<Slot>(m_ways.size() - 1);
    }
    const Slot slot = m_free.back();
    m_free.pop_back();
    return slot;
}

inline void LatticeOpenList::file(Slot slot, double f) {
    m_heap.add(f, std::size_t{m_next_age++} << 32 | slot);
}

inline void LatticeOpenList::push(LatticeCell place, const Way& way, double f) {
    const Slot slot = free_slot();
    m_places[slot] = place;
    m_ways[slot] = way;
    file(slot, f);
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
    for (const std::size_t number : numbers) m_heap.add(f_of(m_ways[slot_of(number)]), number);
}

template <class ScoreFunction>
void LatticeOpenList::score_with_new_ages(const ScoreFunction& f_of) {
    const std::vector<Slot> slots = slots_by_age();
    m_heap.clear();
    m_next_age = 0;
    for (const Slot slot : slots) file(slot, f_of(m_ways[slot]));
}

}  // namespace nmk_search
