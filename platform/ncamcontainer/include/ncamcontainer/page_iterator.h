// page_iterator.h: the standard iterators of arrays that are read by index.
#pragma once

#include <compare>
#include <cstddef>
#include <iterator>
#include <type_traits>

namespace nmk_container {

/// A random-access iterator: the array and an index. `Element` is const where `Array` is. It stays
/// valid while the array grows; at the end of the array it must not be dereferenced.
template <class Array, class Element>
class PageIterator {
  public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = std::remove_const_t<Element>;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;

    PageIterator() = default;
    PageIterator(Array& array, int index) noexcept : m_array(&array), m_index(index) {}

    Element& operator*() const { return (*m_array)[static_cast<int>(m_index)]; }
    Element* operator->() const { return &**this; }
    Element& operator[](difference_type steps) const { return *(*this + steps); }

    PageIterator& operator++() noexcept { return *this += 1; }
    PageIterator& operator--() noexcept { return *this -= 1; }
    PageIterator operator++(int) noexcept {
        const PageIterator old = *this;
        ++*this;
        return old;
    }
    PageIterator operator--(int) noexcept {
        const PageIterator old = *this;
        --*this;
        return old;
    }
    PageIterator& operator+=(difference_type steps) noexcept {
        m_index += steps;
        return *this;
    }
    PageIterator& operator-=(difference_type steps) noexcept { return *this += -steps; }

    friend PageIterator operator+(PageIterator it, difference_type steps) { return it += steps; }
    friend PageIterator operator+(difference_type steps, PageIterator it) { return it += steps; }
    friend PageIterator operator-(PageIterator it, difference_type steps) { return it -= steps; }
    friend difference_type operator-(const PageIterator& a, const PageIterator& b) noexcept {
        return a.m_index - b.m_index;
    }
    bool operator==(const PageIterator& other) const noexcept { return m_index == other.m_index; }
    auto operator<=>(const PageIterator& other) const noexcept { return m_index <=> other.m_index; }

  private:
    Array* m_array = nullptr;
    difference_type m_index = 0;
};

}  // namespace nmk_container
