// coDynArr: an array that grows at its end, with its elements adjacent in memory.
//
// Growing may move the elements; use coPageArr when their addresses must not change. New elements
// are value-initialised, so numbers start at zero.
#pragma once

#include <utils/utCopy.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <vector>

template <class T>
class coDynArr {
  public:
    coDynArr() = default;

    /// `size` elements, value-initialised; a size below 0 counts as 0.
    explicit coDynArr(int size) { resize(size); }
    coDynArr(std::initializer_list<T> elements) : m_elements(elements) {}
    coDynArr(utCopy, const coDynArr& other) : m_elements(other.m_elements) {}

    /// Takes the size of `other` and copies of its elements.
    void become(utCopy, const coDynArr& other) { m_elements = other.m_elements; }

    /// Number of elements.
    int size() const noexcept { return static_cast<int>(m_elements.size()); }

    /// Removes elements at the end or adds value-initialised ones; a size below 0 counts as 0.
    void resize(int size) { m_elements.resize(static_cast<std::size_t>(std::max(size, 0))); }

    /// Allocates memory for `size` elements in total, without adding any.
    void reserve(int size) { m_elements.reserve(static_cast<std::size_t>(std::max(size, 0))); }

    /// Releases the memory that no element uses.
    void shrink() { m_elements.shrink_to_fit(); }

    /// Removes all elements.
    void clear() noexcept { m_elements.clear(); }

    /// Appends a copy of `element`, which may be an element of this array.
    void add(const T& element) { m_elements.push_back(element); }

    /// The first of size() adjacent elements; may be null when there are none.
    T* array() noexcept { return m_elements.data(); }
    const T* array() const noexcept { return m_elements.data(); }

    /// `index` must be at least 0 and below size().
    T& operator[](int index) noexcept { return m_elements[static_cast<std::size_t>(index)]; }
    const T& operator[](int index) const noexcept {
        return m_elements[static_cast<std::size_t>(index)];
    }

    /// The elements, in order.
    T* begin() noexcept { return array(); }
    T* end() noexcept { return array() + size(); }
    const T* begin() const noexcept { return array(); }
    const T* end() const noexcept { return array() + size(); }

  private:
    std::vector<T> m_elements;
};
