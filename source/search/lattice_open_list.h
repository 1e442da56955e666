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

class Lattice_open_list {
  public:
    /// How a place was reached.
    struct Way {
        giPoint2 point;
        double g;
        std::uint32_t parent;  // the number of a closed place
    };
    using Slot = std::uint32_t;

    explicit Lattice_open_list(std::uint32_t first_age = 0) : m_next_age(first_age) {}

    bool is_empty() const { return m_heap.is_empty(); }

    /// `f` must be a number. There must be an age left.
    void push(Lattice_place place, const Way& way, double f);

    /// The best record. Its slot is not used again before the next push.
    Slot first() const { return slot_of(m_heap.first()); }
    void drop_first();

    Lattice_place place(Slot slot) const { return m_places[slot]; }
    const Way& way(Slot slot) const { return m_ways[slot]; }

    /// The slots of all records, oldest first.
    std::vector<Slot> slots_by_age() const;

    /// Puts every record where the f that `f_of` answers for its way belongs.
    template <class F_of>
    void score(const F_of& f_of);

    /// How many records can be pushed before there must be new ages.
    std::uint32_t ages_left() const {
        return std::numeric_limits<std::uint32_t>::max() - m_next_age;
    }

    /// Scores every record, and gives them the first ages, in the order of their old ones.
    template <class F_of>
    void score_with_new_ages(const F_of& f_of);

  private:
    static Slot slot_of(std::size_t number) { return static_cast<Slot>(number); }
    Slot free_slot();
    void file(Slot slot, double f);

    // Age and slot are one number in the heap, the age above.
    static_assert(sizeof(std::size_t) >= 2 * sizeof(Slot));
    Score_heap m_heap;
    std::vector<Lattice_place> m_places;
    std::vector<Way> m_ways;
    std::vector<Slot> m_free;
    std::uint32_t m_next_age;
};

inline Lattice_open_list::Slot Lattice_open_list::free_slot() {
    if (m_free.empty()) {
        m_places.emplace_back();
        m_ways.emplace_back();
        return static_cast<Slot>(m_ways.size() - 1);
    }
    const Slot slot = m_free.back();
    m_free.pop_back();
    return slot;
}

inline void Lattice_open_list::file(Slot slot, double f) {
    m_heap.add(f, std::size_t{m_next_age++} << 32 | slot);
}

inline void Lattice_open_list::push(Lattice_place place, const Way& way, double f) {
    const Slot slot = free_slot();
    m_places[slot] = place;
    m_ways[slot] = way;
    file(slot, f);
}

inline void Lattice_open_list::drop_first() {
    m_free.push_back(first());
    m_heap.drop_first();
}

inline std::vector<Lattice_open_list::Slot> Lattice_open_list::slots_by_age() const {
    std::vector<std::size_t> numbers = m_heap.numbers();
    std::sort(numbers.begin(), numbers.end());
    std::vector<Slot> slots;
    slots.reserve(numbers.size());
    for (const std::size_t number : numbers) slots.push_back(slot_of(number));
    return slots;
}

template <class F_of>
void Lattice_open_list::score(const F_of& f_of) {
    const std::vector<std::size_t> numbers = m_heap.numbers();
    m_heap.clear();
    for (const std::size_t number : numbers) m_heap.add(f_of(m_ways[slot_of(number)]), number);
}

template <class F_of>
void Lattice_open_list::score_with_new_ages(const F_of& f_of) {
    const std::vector<Slot> slots = slots_by_age();
    m_heap.clear();
    m_next_age = 0;
    for (const Slot slot : slots) file(slot, f_of(m_ways[slot]));
}

}  // namespace nmk_search
