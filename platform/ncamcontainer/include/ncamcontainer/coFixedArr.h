// coFixedArr: an array whose size is set by its constructor.
//
// The elements are adjacent in memory and value-initialised, so numbers start at zero. Only
// `become` and assignment change the size of an existing array.
#pragma once

#include <utils/utCopy.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

template <class T>
class coFixedArr {
  public:
    coFixedArr() = default;

    /// `size` elements, value-initialised; a size below 0 counts as 0.
    explicit coFixedArr(int size)
        : m_size(std::max(size, 0)),
          m_elements(m_size > 0 ? std::make_unique<T[]>(static_cast<std::size_t>(m_size))
                                : nullptr) {}
    coFixedArr(utCopy, const coFixedArr& other) { become(utCopy(), other); }
    coFixedArr(const coFixedArr& other) { become(utCopy(), other); }
    coFixedArr(coFixedArr&& other) noexcept
        : m_size(std::exchange(other.m_size, 0)), m_elements(std::move(other.m_elements)) {}

    coFixedArr& operator=(const coFixedArr& other) {
        become(utCopy(), other);
        return *this;
    }
    coFixedArr& operator=(coFixedArr&& other) noexcept {
        m_size = std::exchange(other.m_size, 0);
        m_elements = std::move(other.m_elements);
        return *this;
    }

    /// Takes the size of `other` and copies of its elements; storage of the same size is reused.
    void become(utCopy, const coFixedArr& other) {
        if (this == &other) return;
        if (m_size != other.m_size) *this = coFixedArr(other.m_size);
        std::copy(other.begin(), other.end(), begin());
    }

    /// Number of elements.
    int size() const noexcept { return m_size; }

    /// The first of size() adjacent elements; null when there are none.
    T* array() noexcept { return m_elements.get(); }
    const T* array() const noexcept { return m_elements.get(); }

    /// `index` must be at least 0 and below size().
    T& operator[](int index) noexcept { return m_elements[static_cast<std::size_t>(index)]; }
    const T& operator[](int index) const noexcept {
        return m_elements[static_cast<std::size_t>(index)];
    }

    /// The elements, in order.
    T* begin() noexcept { return array(); }
    T* end() noexcept { return array() + m_size; }
    const T* begin() const noexcept { return array(); }
    const T* end() const noexcept { return array() + m_size; }

  private:
    int m_size = 0;
    std::unique_ptr<T[]> m_elements;
};
