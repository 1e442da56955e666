// list_iterator.h: the standard iterators of singly and doubly linked lists.
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>

namespace nmk_container {

/// A forward iterator over links; `Element` is const for an iterator that only reads. It stays
/// valid until its element is removed.
template <class Link, class Element>
class ListIterator {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_const_t<Element>;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;

    ListIterator() = default;
    explicit ListIterator(Link* link) noexcept : m_link(link) {}

    Element& operator*() const noexcept { return m_link->element; }
    Element* operator->() const noexcept { return &m_link->element; }
    ListIterator& operator++() noexcept {
        m_link = m_link->next;
        return *this;
    }
    ListIterator operator++(int) noexcept {
        const ListIterator old = *this;
        ++*this;
        return old;
    }
    bool operator==(const ListIterator& other) const noexcept { return m_link == other.m_link; }

  private:
    Link* m_link = nullptr;
};

}  // namespace nmk_container
