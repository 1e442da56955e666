// coListPosition: what the positions in singly and doubly linked lists have in common.
//
// The list, the link that the position stands on, null before the first, and its index. How a
// position steps is each list's own.
#pragma once

template <class List, class Link, class T>
class coListPosition {
  public:
    /// Equal when they stand on the same element, or both before the first of the same list.
    bool operator==(const coListPosition& other) const noexcept {
        return m_list == other.m_list && m_link == other.m_link;
    }

    /// Goes before the first element.
    void reset() noexcept { stand_on(nullptr, -1); }

    /// Position of the element from 0, or -1 before the first.
    int index() const noexcept { return m_index; }

    /// Non-zero when the position is on an element.
    int valid() const noexcept { return m_link != nullptr ? 1 : 0; }

    /// The element at the position; it must be on one.
    const T& read() const noexcept { return m_link->element; }
    const T& operator*() const noexcept { return m_link->element; }
    const T* operator->() const noexcept { return &m_link->element; }

  protected:
    explicit coListPosition(const List& list) noexcept : m_list(&list) {}

    void stand_on(Link* link, int index) noexcept {
        m_link = link;
        m_index = link != nullptr ? index : -1;
    }

    const List* m_list;
    Link* m_link = nullptr;
    int m_index = -1;
};
