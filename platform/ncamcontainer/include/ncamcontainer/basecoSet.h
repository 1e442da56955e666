// basecoSet: what every hash set does with its elements, and the walk over them.
//
// Missing elements are answered as nil(), see coHash. Elements are told apart by the Interface's
// hash and comparison and stand in one array, so that adding one allocates nothing of its own.
// Adding may move the elements: an answer is good until the set is next changed.
#pragma once

#include <ncamcontainer/coHash.h>

template <class Element, class Interface>
class basecoSetcoIterator;

template <class Element, class Interface = coObjInterface<Element>>
class UT_EXPORT basecoSet : public coHash<Element, Interface> {
    using Core = coHash<Element, Interface>;

  public:
    using element_type = Element;
    using Core::nil;

    /// Slots are made at the first insertion, 2 to the power `size_exponent` of them, and doubled
    /// when `load_limit` percent are taken.
    basecoSet(int size_exponent, int load_limit) noexcept : Core(size_exponent, load_limit) {}

    /// Puts a copy of `element` in and answers nil; where an equal one is there already, answers
    /// that one and leaves it. nil itself is never put in.
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

    bool contains(const Element& element) const { return Core::find_index(element) >= 0; }

    /// Takes the stored element that equals `element` out and answers it, or nil.
    Element remove(const Element& element) {
        const int index = Core::find_index(element);
        return index >= 0 ? Core::remove_at(index) : nil();
    }

    /// Takes out the first element that the iteration meets and answers it, or nil.
    Element remove_any() {
        const int index = Core::first_used();
        return index >= 0 ? Core::remove_at(index) : nil();
    }

    /// Drops all elements and keeps the slots.
    void clear() {
        if (Core::arr_size() > 0) Core::resize(0, 0);
    }

  protected:
    basecoSet(const basecoSet&) = default;
    basecoSet(basecoSet&&) noexcept = default;

  private:
    friend class basecoSetcoIterator<Element, Interface>;
};

/// A walk over a set in the order of its slots, which has no meaning. The set must not change.
template <class Element, class Interface = coObjInterface<Element>>
class basecoSetcoIterator {
  public:
    explicit basecoSetcoIterator(const basecoSet<Element, Interface>& set) noexcept : m_set(&set) {}

    /// Goes on to the next element; 0 at the end, and the position is then before the first again.
    int operator++() noexcept {
        m_index = m_set->next_used(m_index + 1);
        return m_index >= 0 ? 1 : 0;
    }

    void reset() noexcept { m_index = -1; }

    /// Only while the position is on an element.
    const Element& operator*() const noexcept { return m_set->arr_get(m_index); }
    const Element* operator->() const noexcept { return &m_set->arr_get(m_index); }

  private:
    const basecoSet<Element, Interface>* m_set;
    int m_index = -1;
};
