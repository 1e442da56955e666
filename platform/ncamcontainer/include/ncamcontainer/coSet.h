// coSet: a hash set of values that can be copied, compared and combined with other sets.
#pragma once

#include <ncamcontainer/basecoSet.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

template <class Element, class Interface = coObjInterface<Element>>
class UT_EXPORT coSet : public basecoSet<Element, Interface> {
    using Core = basecoSet<Element, Interface>;

  public:
    using coIterator = basecoSetcoIterator<Element, Interface>;

    /// At the first insertion 2 to the power `size_exponent` slots are made; their number is
    /// doubled when `load_limit` percent of them are used.
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

    /// Copies the elements of `other`, its slots and its limits.
    void become(utCopy, const coSet& other) { Core::become(utCopy(), other); }

    /// Subset: whether each element of this set is found in `other`.
    bool operator<=(const coSet& other) const {
        if (this->size() > other.size()) return false;
        return std::all_of(this->begin(), this->end(),
                           [&other](const Element& element) { return other.contains(element); });
    }

    /// Whether both sets have the same elements.
    bool operator==(const coSet& other) const {
        return this->size() == other.size() && this->running_hash() == other.running_hash() &&
               *this <= other;
    }

    /// Union in place; of two equal elements, the one in this set is kept.
    coSet& operator+=(const coSet& other) {
        if (this == &other) return *this;
        for (const Element& element : other) this->add(element);
        return *this;
    }

    /// Intersection in place.
    coSet& operator*=(const coSet& other) {
        if (this == &other) return *this;
        std::vector<Element> surplus;
        std::copy_if(this->begin(), this->end(), std::back_inserter(surplus),
                     [&other](const Element& element) { return !other.contains(element); });
        for (const Element& element : surplus) this->remove(element);
        return *this;
    }

    /// Difference in place.
    coSet& operator-=(const coSet& other) {
        if (this == &other) {
            this->clear();
            return *this;
        }
        for (const Element& element : other) this->remove(element);
        return *this;
    }
};
