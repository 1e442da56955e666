// coPageArr: an array in pages of one fixed size, whose elements never move as it grows.
//
// Page number = index >> shift, place in the page = index & (page size - 1). A page belongs to one
// array, is made with all its elements default-constructed, and is neither shared nor moved; only
// `repaginate`, which exists to give memory back, copies elements to a page of another size.
//
// The size is a high-water mark: one more than the highest index that was asked for by the
// non-const operator[]. Elements above the mark are always default-constructed ones.
#pragma once

#include <utils/utCopy.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

template <class T>
class coPageArr {
  public:
    class coIterator;

    /// Pages of 256 elements; a page table of 5 pages, growing by 10.
    coPageArr() = default;

    /// Pages of 2 to the power `shift` elements (0 to 30); the page table has room for
    /// `table_start` pages at first and grows by `table_growth` (each at least 1).
    coPageArr(int shift, int table_start, int table_growth)
        : m_shift(std::clamp(shift, 0, 30)),
          m_table_start(std::max(table_start, 1)),
          m_table_growth(std::max(table_growth, 1)) {}
    coPageArr(utCopy, const coPageArr& other) { become(utCopy(), other); }
    coPageArr(const coPageArr& other) { become(utCopy(), other); }
    coPageArr(coPageArr&& other) noexcept { *this = std::move(other); }

    coPageArr& operator=(const coPageArr& other) {
        become(utCopy(), other);
        return *this;
    }
    coPageArr& operator=(coPageArr&& other) noexcept {
        if (this == &other) return *this;
        m_mark = std::exchange(other.m_mark, 0);
        m_pages = std::move(other.m_pages);
        other.m_pages.clear();
        take_paging(other);
        return *this;
    }

    /// Takes the page size and the elements of `other`.
    void become(utCopy, const coPageArr& other) {
        if (this == &other) return;
        clear();
        take_paging(other);
        copy(0, other, 0, other.m_mark);
    }

    /// The high-water mark: one more than the highest index in use.
    int size() const noexcept { return m_mark; }

    int page_size() const noexcept { return 1 << m_shift; }

    /// Number of pages that exist.
    int pages() const noexcept { return static_cast<int>(m_pages.size()); }

    /// The element at `index` (at least 0). Pages are made up to it where there are none, and the
    /// mark is raised to `index` + 1 where it is lower; it is never lowered.
    T& operator[](int index) {
        if (index >= m_mark) {
            get_block(index >> m_shift);
            m_mark = index + 1;
        }
        return place(index);
    }

    /// `index` must be at least 0 and below size().
    const T& operator[](int index) const noexcept { return place(index); }

    /// Appends a copy of `element`, which may be an element of this array.
    void add(const T& element) { (*this)[m_mark] = element; }

    /// Keeps the first `keep` elements and frees the pages past them.
    void clear(int keep = 0) { shrink(keep, 0); }

    /// Keeps the first `keep` elements, and the pages that hold them and `spare` more; the other
    /// pages are freed.
    void shrink(int keep, int spare);

    /// Copies `count` elements of `source` (which may be this array) to `to` upwards.
    void copy(int to, const coPageArr& source, int from, int count);

    /// Copies `count` elements that lie side by side into the array, to `to` upwards.
    void copyin(int to, const T* source, int count) {
        for (int i = 0; i < count; ++i) (*this)[to + i] = source[i];
    }

    /// Copies `count` elements from `from` upwards out to elements that lie side by side.
    void copyout(int from, T* target, int count) const {
        for (int i = 0; i < count; ++i) target[i] = (*this)[from + i];
    }

    /// Puts the elements in the opposite order.
    void reverse() {
        for (int low = 0, high = m_mark - 1; low < high; ++low, --high) {
            using std::swap;
            swap(place(low), place(high));
        }
    }

    /// Gives back what is not needed; non-zero when anything changed.
    ///
    /// With fewer elements than one page holds, the page size is halved while they still fit; an
    /// empty array loses all its pages and keeps its page size. Otherwise the pages past the mark
    /// are freed. Elements move when the page size changes.
    int repaginate();

    coIterator iterator() const { return coIterator(*this); }

  protected:
    /// Makes the pages up to and including `page`.
    void get_block(int page) {
        while (pages() <= page) {
            if (m_pages.size() == m_pages.capacity()) reserve_table();
            m_pages.push_back(std::make_unique<T[]>(static_cast<std::size_t>(page_size())));
        }
    }

  private:
    T& place(int index) const noexcept {
        return m_pages[static_cast<std::size_t>(index >> m_shift)]
                      [static_cast<std::size_t>(index & ((1 << m_shift) - 1))];
    }

    void reserve_table() {
        const std::size_t room = m_pages.capacity();
        m_pages.reserve(room == 0 ? static_cast<std::size_t>(m_table_start)
                                  : room + static_cast<std::size_t>(m_table_growth));
    }

    void take_paging(const coPageArr& other) noexcept {
        m_shift = other.m_shift;
        m_table_start = other.m_table_start;
        m_table_growth = other.m_table_growth;
    }

    int pages_for(long long elements) const noexcept {
        return static_cast<int>((elements + page_size() - 1) >> m_shift);
    }

    int shift_holding_the_elements() const noexcept {
        int shift = m_shift;
        while (shift > 0 && m_mark <= (1 << (shift - 1))) --shift;
        return shift;
    }

    bool free_pages_past(long long elements) {
        const std::size_t kept = static_cast<std::size_t>(pages_for(elements));
        if (m_pages.size() <= kept) return false;
        m_pages.resize(kept);
        return true;
    }

    int m_mark = 0;
    int m_shift = 8;
    int m_table_start = 5;
    int m_table_growth = 10;
    std::vector<std::unique_ptr<T[]>> m_pages;
};

template <class T>
void coPageArr<T>::shrink(int keep, int spare) {
    const int kept = std::clamp(keep, 0, m_mark);
    free_pages_past(static_cast<long long>(kept) + std::max(spare, 0));
    const long long in_pages = static_cast<long long>(pages()) << m_shift;
    const int past = static_cast<int>(std::min<long long>(m_mark, in_pages));
    for (int i = kept; i < past; ++i) place(i) = T();
    m_mark = kept;
}

template <class T>
void coPageArr<T>::copy(int to, const coPageArr& source, int from, int count) {
    if (count <= 0) return;
    (*this)[to + count - 1];
    if (this == &source && from < to) {
        for (int i = count - 1; i >= 0; --i) place(to + i) = source.place(from + i);
    } else {
        for (int i = 0; i < count; ++i) place(to + i) = source.place(from + i);
    }
}

template <class T>
int coPageArr<T>::repaginate() {
    const int shift = m_mark > 0 && m_mark < page_size() ? shift_holding_the_elements() : m_shift;
    if (shift == m_shift) return free_pages_past(m_mark) ? 1 : 0;
    coPageArr smaller(shift, m_table_start, m_table_growth);
    for (int i = 0; i < m_mark; ++i) smaller[i] = std::move(place(i));
    *this = std::move(smaller);
    return 1;
}

/// A read position in a paged array; -1 means before the first element.
template <class T>
class coPageArr<T>::coIterator {
  public:
    explicit coIterator(const coPageArr& array) : m_array(&array) {}

    /// Goes to the first element; 0 when the array is empty.
    int do_first() {
        m_index = -1;
        return ++*this;
    }

    /// Goes on by one; 0 at the end, and the position is then before the first again.
    int operator++() {
        m_index = m_index + 1 < m_array->size() ? m_index + 1 : -1;
        return m_index >= 0 ? 1 : 0;
    }

    int index() const noexcept { return m_index; }

    /// Only while the position is on an element.
    const T& operator*() const { return (*m_array)[m_index]; }
    const T* operator->() const { return &(*m_array)[m_index]; }

  private:
    const coPageArr* m_array;
    int m_index = -1;
};
