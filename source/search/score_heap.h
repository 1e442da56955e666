// score_heap.h: numbers by score: the smallest score first, and among equal scores the smallest
// number.
//
// Four children to a parent rather than two: half the levels, and the children of a parent share
// one or two cache lines. Score and number are one integer, so that comparing two entries takes no
// branch: every second one would be mispredicted.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nmk_search {

class ScoreHeap {
  public:
    bool is_empty() const { return m_entries.empty(); }
    void clear() { m_entries.clear(); }

    /// `score` must not be NaN.
    void add(double score, std::size_t number);

    std::size_t first() const { return number_of(m_entries[0]); }
    void drop_first();

    /// All numbers, in no particular order.
    std::vector<std::size_t> numbers() const;

  private:
    static constexpr std::size_t children = 4;

    // Above the bits of the score, in an order of its own, below the number.
    __extension__ using Entry = unsigned __int128;

    static std::size_t number_of(Entry entry) { return static_cast<std::size_t>(entry); }
    void rise(std::size_t hole, Entry entry);
    std::size_t first_child(std::size_t begin, std::size_t end) const;

    std::vector<Entry> m_entries;
};

// The bits of doubles rise with their value, once those of negative ones are turned round.
inline void ScoreHeap::add(double score, std::size_t number) {
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    const auto bits = std::bit_cast<std::uint64_t>(score + 0.0);  // of the two zeros one is left
    const std::uint64_t key = (bits & sign) != 0 ? ~bits : bits | sign;
    m_entries.push_back(Entry{key} << 64 | number);
    rise(m_entries.size() - 1, m_entries.back());
}

inline std::vector<std::size_t> ScoreHeap::numbers() const {
    std::vector<std::size_t> numbers;
    numbers.reserve(m_entries.size());
    for (const Entry entry : m_entries) numbers.push_back(number_of(entry));
    return numbers;
}

inline void ScoreHeap::rise(std::size_t hole, Entry entry) {
    while (hole != 0) {
        const std::size_t parent = (hole - 1) / children;
        if (entry > m_entries[parent]) break;
        m_entries[hole] = m_entries[parent];
        hole = parent;
    }
    m_entries[hole] = entry;
}

inline std::size_t ScoreHeap::first_child(std::size_t begin, std::size_t end) const {
    std::size_t first = begin;
    Entry least = m_entries[begin];
    for (std::size_t i = begin + 1; i < end; ++i) {
        const bool is_less = m_entries[i] < least;
        first = is_less ? i : first;
        least = is_less ? m_entries[i] : least;
    }
    return first;
}

// The hole goes all the way down, and the last entry up again from there: it was among the last,
// so it mostly stays where it is put.
inline void ScoreHeap::drop_first() {
    const Entry last = m_entries.back();
    m_entries.pop_back();
    const std::size_t count = m_entries.size();
    if (count == 0) return;
    std::size_t hole = 0;
    std::size_t child = 1;
    for (; child + children <= count; child = hole * children + 1) {
        const std::size_t first = first_child(child, child + children);
        m_entries[hole] = m_entries[first];
        hole = first;
    }
    if (child < count) {
        const std::size_t first = first_child(child, count);
        m_entries[hole] = m_entries[first];
        hole = first;
    }
    rise(hole, last);
}

}  // namespace nmk_search
