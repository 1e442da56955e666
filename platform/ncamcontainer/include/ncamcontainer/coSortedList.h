// coSortedList: a list kept in the order of a comparison.
//
// A multiset: elements that compare equal are all kept, in the order of their insertion. Less(a, b)
// returns whether a comes before b, strictly. It is default-constructed, so the settings of a
// comparison are stored outside it and must not change while the list has elements. Reading an
// empty list returns nil(), an element that belongs to the class and is recognised by its address.
#pragma once

#include <ncamcontainer/co_nil.h>
#include <utils/utCopy.h>

#include <set>

template <class T, class Less>
class coSortedList {
  public:
    using const_iterator = typename std::multiset<T, Less>::const_iterator;
    using const_reverse_iterator = typename std::multiset<T, Less>::const_reverse_iterator;

    coSortedList() = default;
    coSortedList(utCopy, const coSortedList& other) : m_elements(other.m_elements) {}

    /// Replaces the elements by copies of those of `other`.
    void become(utCopy, const coSortedList& other) { m_elements = other.m_elements; }

    /// What reading an empty list returns: default-constructed, one object for all lists of this
    /// type. Made on first use; safe from any thread.
    static const T& nil() { return nmk_container::nil_element<coSortedList, T>(); }

    /// Inserts a copy of `element` after all elements that do not come after it.
    void add(const T& element) { m_elements.insert(element); }

    /// Number of elements.
    int size() const noexcept { return static_cast<int>(m_elements.size()); }

    /// The first element, or the last; nil() when the list is empty.
    const T& read_first() const { return size() > 0 ? *m_elements.begin() : nil(); }
    const T& read_last() const { return size() > 0 ? *m_elements.rbegin() : nil(); }

    /// Removes the first element; does nothing when the list is empty.
    void remove_first() {
        if (!m_elements.empty()) m_elements.erase(m_elements.begin());
    }

    /// Removes all elements.
    void clear() noexcept { m_elements.clear(); }

    /// The elements in ascending order, or from the last to the first.
    const_iterator begin() const noexcept { return m_elements.begin(); }
    const_iterator end() const noexcept { return m_elements.end(); }
    const_reverse_iterator rbegin() const noexcept { return m_elements.rbegin(); }
    const_reverse_iterator rend() const noexcept { return m_elements.rend(); }

  private:
    std::multiset<T, Less> m_elements;
};
