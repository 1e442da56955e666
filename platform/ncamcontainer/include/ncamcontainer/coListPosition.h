// coListPosition: what the read positions of singly and doubly linked lists have in common.
//
// A position holds the list, the link of its element (null before the first element) and the index
// of that element. Each list defines how its positions step.
#pragma once

template <class List, class Link, class T>
class coListPosition {
  public:
    /// True for positions on the same element, or both before the first element of one list.
    bool operator==(const coListPosition& other) const noexcept {
        return m_list == other.m_list && m_link == other.m_link;
    }

    /// Moves before the first element.
    void reset() noexcept { move_to(nullptr, -1); }

    /// Index of the element, from 0; -1 before the first.
    int index() const noexcept { return m_index; }

    /// Non-zero when the position is on an element.
    int valid() const noexcept { return m_link != nullptr ? 1 : 0; }

    /// The element at the position; the list's nil() before the first.
    const T& read() const { return m_link != nullptr ? m_link->element : List::nil(); }
    const T& operator*() const { return read(); }
    const T* operator->() const { return &read(); }

  protected:
    explicit coListPosition(const List& list) noexcept : m_list(&list) {}

    void move_to(Link* link, int index) noexcept {
        m_link = link;
        m_index = link != nullptr ? index : -1;
    }

    const List* m_list;
    Link* m_link = nullptr;
    int m_index = -1;
};
