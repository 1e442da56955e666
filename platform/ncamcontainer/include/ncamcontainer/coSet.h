// coSet: a hash set of values that can be copied and joined with others.
#pragma once

#include <ncamcontainer/basecoSet.h>

#include <initializer_list>
#include <utility>
#include <vector>

template <class Element, class Interface = coObjInterface<Element>>
class UT_EXPORT coSet : public basecoSet<Element, Interface> {
    using Core = basecoSet<Element, Interface>;

  public:
    using coIterator = basecoSetcoIterator<Element, Interface>;

    /// A table of 2 to the power `size_exponent` slots, to be made at the first insertion, which
    /// doubles when `load_limit` percent of its slots are taken.
    explicit coSet(int size_exponent = 4, int load_limit = 50) noexcept
        : Core(size_exponent, load_limit) {}
    coSet(std::initializer_list<Element> elements) : coSet() {
        for (const Element& element : elements) this->add(element);
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
        for (coIterator it(other); ++it;) this->add(*it);
        return *this;
    }

    /// Intersection in place.
    coSet& operator*=(const coSet& other) {
        if (this == &other) return *this;
        std::vector<Element> gone;
        for (coIterator it(*this); ++it;) {
            if (!other.contains(*it)) gone.push_back(*it);
        }
        for (const Element& element : gone) this->remove(element);
        return *this;
    }

    /// Difference in place.
    coSet& operator-=(const coSet& other) {
        if (this == &other) {
            this->clear();
            return *this;
        }
        for (coIterator it(other); ++it;) this->remove(*it);
        return *this;
    }
};
