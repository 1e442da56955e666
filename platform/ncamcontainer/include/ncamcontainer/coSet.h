// coSet: a hash set of values.
//
// Missing elements are answered as nil(), see coHash. Elements are told apart by the Interface's
// hash and comparison and stand in one array, so that adding one allocates nothing of its own.
// Adding may move the elements: an answer is good until the set is next changed.
#pragma once

#include <ncamcontainer/coHash.h>

#include <initializer_list>

template <class Element, class Interface = coObjInterface<Element>>
class UT_EXPORT coSet : public coHash<Element, Interface> {
    using Core = coHash<Element, Interface>;

  public:
    class coIterator;
    using element_type = Element;
    using Core::nil;

    /// A table of 2 to the power `size_exponent` slots, to be made at the first insertion, which
    /// doubles when `load_limit` percent of its slots are taken.
    explicit coSet(int size_exponent = 4, int load_limit = 50) noexcept
        : Core(size_exponent, load_limit) {}
    coSet(std::initializer_list<Element> elements) : coSet() {
        for (const Element& element : elements) add(element);
    }
    coSet(utCopy, const coSet& other) : Core(other) {}
    coSet(const coSet& other) : Core(other) {}
    coSet(coSet&& other) noexcept : Core(std::move(other)) {}
    coSet& operator=(const coSet& other) {
        become(utCopy(), other);
        return *this;
    }
    coSet& operator=(coSet&& other) noexcept {
        if (this != &other) Core::take(other);
        return *this;
    }

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

    /// Takes the elements of `other`, its slots and its limits.
    void become(utCopy, const coSet& other) { Core::become(utCopy(), other); }

    /// Subset: each of these elements is found in `other`.
    bool operator<=(const coSet& other) const {
        if (this->size() > other.size()) return false;
        for (coIterator it(*this); ++it;) {
            if (!other.contains(*it)) return false;
        }
        return true;
    }

    bool operator==(const coSet& other) const {
        return this->size() == other.size() && this->running_hash() == other.running_hash() &&
               *this <= other;
    }

    /// Union in place; elements that are in both stay as they are here.
    coSet& operator+=(const coSet& other) {
        if (this == &other) return *this;
        for (coIterator it(other); ++it;) add(*it);
        return *this;
    }

    /// Intersection in place.
    coSet& operator*=(const coSet& other) {
        if (this == &other) return *this;
        std::vector<Element> gone;
        for (coIterator it(*this); ++it;) {
            if (!other.contains(*it)) gone.push_back(*it);
        }
        for (const Element& element : gone) remove(element);
        return *this;
    }

    /// Difference in place.
    coSet& operator-=(const coSet& other) {
        if (this == &other) {
            clear();
            return *this;
        }
        for (coIterator it(other); ++it;) remove(*it);
        return *this;
    }
};

/// A walk over a set in the order of its slots, which has no meaning. The set must not change.
template <class Element, class Interface>
class coSet<Element, Interface>::coIterator {
  public:
    explicit coIterator(const coSet& set) noexcept : set_(&set) {}

    /// Goes on to the next element; 0 at the end, and the position is then before the first again.
    int operator++() noexcept {
        index_ = set_->next_used(index_ + 1);
        return index_ >= 0 ? 1 : 0;
    }

    void reset() noexcept { index_ = -1; }

    /// Only while the position is on an element.
    const Element& operator*() const noexcept { return set_->arr_get(index_); }
    const Element* operator->() const noexcept { return &set_->arr_get(index_); }

  private:
    const coSet* set_;
    int index_ = -1;
};

template <class Element, class Interface = coObjInterface<Element>>
using basecoSetcoIterator = typename coSet<Element, Interface>::coIterator;
