// basecoSet: the operations of every hash set on its elements, and the iteration over them.
//
// For a missing element nil() is returned, see coHash. Elements are identified by the hash and the
// comparison of the Interface and are stored in one array, so adding one allocates nothing for the
// element itself. Adding may move the elements: a returned reference is valid until the set is next
// changed.
#pragma once

#include <ncamcontainer/coHash.h>

#include <cstddef>
#include <iterator>

template <class Element, class Interface>
class basecoSetcoIterator;

template <class Element, class Interface = coObjInterface<Element>>
class UT_EXPORT basecoSet : public coHash<Element, Interface> {
    using Core = coHash<Element, Interface>;

  public:
    class const_iterator;
    using element_type = Element;
    using iterator = const_iterator;
    using Core::nil;

    /// At the first insertion 2 to the power `size_exponent` slots are made; their number is
    /// doubled when `load_limit` percent of them are used.
    basecoSet(int size_exponent, int load_limit) noexcept : Core(size_exponent, load_limit) {}

    /// Inserts a copy of `element` and returns nil; when an equal element is stored already,
    /// returns the stored one and does not change it. nil itself is never inserted.
    const Element& add(const Element& element) {
        if (&element == &nil()) return nil();
        const Element* const stored = Core::add(element);
        return stored != nullptr ? *stored : nil();
    }

    /// The stored element that equals `element`, or nil.
    const Element& find(const Element& element) const {
        const int index = Core::find_index(element);
        return index >= 0 ? Core::arr_get(index) : nil();
    }

    /// Whether an element that equals `element` is stored.
    bool contains(const Element& element) const { return Core::find_index(element) >= 0; }

    /// Removes the stored element that equals `element` and returns it, or returns nil.
    Element remove(const Element& element) {
        const int index = Core::find_index(element);
        return index >= 0 ? Core::remove_at(index) : nil();
    }

    /// Removes the first element in the order of iteration and returns it, or returns nil.
    Element remove_any() {
        const int index = Core::first_used();
        return index >= 0 ? Core::remove_at(index) : nil();
    }

    /// Removes all elements and keeps the slots.
    void clear() {
        if (Core::arr_size() > 0) Core::resize(0, 0);
    }

    /// The elements in the order of their slots, which has no meaning. They cannot be changed, and
    /// the set must not change during the iteration.
    const_iterator begin() const noexcept { return const_iterator(*this, Core::next_used(0)); }
    const_iterator end() const noexcept { return const_iterator(*this, -1); }

  protected:
    basecoSet(const basecoSet&) = default;
    basecoSet(basecoSet&&) noexcept = default;

  private:
    friend class basecoSetcoIterator<Element, Interface>;
};

/// The standard forward iterator of a set.
template <class Element, class Interface>
class UT_EXPORT basecoSet<Element, Interface>::const_iterator {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = const Element*;
    using reference = const Element&;

    const_iterator() = default;

    const Element& operator*() const noexcept { return m_set->arr_get(m_index); }
    const Element* operator->() const noexcept { return &**this; }
    const_iterator& operator++() noexcept {
        m_index = m_set->next_used(m_index + 1);
        return *this;
    }
    const_iterator operator++(int) noexcept {
        const const_iterator old = *this;
        ++*this;
        return old;
    }
    bool operator==(const const_iterator& other) const noexcept { return m_index == other.m_index; }

  private:
    friend class basecoSet;
    const_iterator(const basecoSet& set, int index) noexcept : m_set(&set), m_index(index) {}

    const basecoSet* m_set = nullptr;
    int m_index = -1;  // of the slot; -1 at the end
};

/// A read position in a set, which visits the elements in the same order. It is made before the
/// first element; the set must not change while it is used.
template <class Element, class Interface = coObjInterface<Element>>
class basecoSetcoIterator {
  public:
    explicit basecoSetcoIterator(const basecoSet<Element, Interface>& set) noexcept : m_set(&set) {}

    /// Moves to the next element; 0 at the end, and the position is then before the first again.
    int operator++() noexcept {
        m_index = m_set->next_used(m_index + 1);
        return m_index >= 0 ? 1 : 0;
    }

    /// Moves before the first element.
    void reset() noexcept { m_index = -1; }

    /// The element at the position; the set's nil() before the first.
    const Element& operator*() const {
        return m_index >= 0 ? m_set->arr_get(m_index) : m_set->nil();
    }
    const Element* operator->() const { return &**this; }

  private:
    const basecoSet<Element, Interface>* m_set;
    int m_index = -1;
};
