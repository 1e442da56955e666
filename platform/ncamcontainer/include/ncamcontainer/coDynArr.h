// coDynArr: an array that grows at its end, its elements side by side in memory.
//
// Growing may move the elements: where their addresses must stay, use coPageArr. New elements are
// value-initialised, so numbers start at zero.
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

    /// Takes the size and the elements of `other`.
    void become(utCopy, const coDynArr& other) { m_elements = other.m_elements; }

    int size() const noexcept { return static_cast<int>(m_elements.size()); }

    /// Cuts off the end or adds value-initialised elements; a size below 0 counts as 0.
    void resize(int size) { m_elements.resize(static_cast<std::size_t>(std::max(size, 0))); }

    /// Makes room for `size` elements in all, without adding any.
    void reserve(int size) { m_elements.reserve(static_cast<std::size_t>(std::max(size, 0))); }

    /// Gives back the room that no element uses.
    void shrink() { m_elements.shrink_to_fit(); }

    void clear() noexcept { m_elements.clear(); }

    /// Appends a copy of `element`, which may be an element of this array.
    void add(const T& element) { m_elements.push_back(element); }

    /// The first of size() elements that lie side by side; may be null when there is none.
    T* array() noexcept { return m_elements.data(); }
    const T* array() const noexcept { return m_elements.data(); }

    /// `index` must be at least 0 and below size().
    T& operator[](int index) noexcept { return m_elements[static_cast<std::size_t>(index)]; }
    const T& operator[](int index) const noexcept {
        return m_elements[static_cast<std::size_t>(index)];
    }

    T* begin() noexcept { return array(); }
    T* end() noexcept { return array() + size(); }
    const T* begin() const noexcept { return array(); }
    const T* end() const noexcept { return array() + size(); }

  private:
    std::vector<T> m_elements;
};
