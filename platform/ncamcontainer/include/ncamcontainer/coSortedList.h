// coSortedList: a list kept in the order of a comparison.
//
// A multiset: elements that compare equal are all kept, a new one behind those that are there.
// Less(a, b) tells whether a stands before b, strictly. It is made anew by default, so a comparison
// with settings keeps them elsewhere, and the settings must not change while the list has elements.
#pragma once

#include <utils/utCopy.h>

#include <set>

template <class T, class Less>
class coSortedList {
  public:
    using const_iterator = typename std::multiset<T, Less>::const_iterator;
    using const_reverse_iterator = typename std::multiset<T, Less>::const_reverse_iterator;

    coSortedList() = default;
    coSortedList(utCopy, const coSortedList& other) : m_elements(other.m_elements) {}

    void become(utCopy, const coSortedList& other) { m_elements = other.m_elements; }

    /// Puts a copy of `element` behind all those that do not stand after it.
    void add(const T& element) { m_elements.insert(element); }

    int size() const noexcept { return static_cast<int>(m_elements.size()); }

    /// The first element; the list must have one.
    const T& read_first() const { return *m_elements.begin(); }
    const T& read_last() const { return *m_elements.rbegin(); }

    /// Drops the first element; nothing when there is none.
    void remove_first() {
        if (!m_elements.empty()) m_elements.erase(m_elements.begin());
    }

    void clear() noexcept { m_elements.clear(); }

    const_iterator begin() const noexcept { return m_elements.begin(); }
    const_iterator end() const noexcept { return m_elements.end(); }
    const_reverse_iterator rbegin() const noexcept { return m_elements.rbegin(); }
    const_reverse_iterator rend() const noexcept { return m_elements.rend(); }

  private:
    std::multiset<T, Less> m_elements;
};
