// coPageArr: an array in pages of one fixed size, whose elements never move as it grows.
//
// Page number = index >> shift, index in the page = index & (page size - 1). A page belongs to one
// array, is made with all its elements default-constructed, and is neither shared nor moved; only
// `repaginate`, which releases memory, moves elements to a page of another size.
//
// The size is a high-water mark: one more than the highest index that was passed to the non-const
// operator[]. Elements above the mark are always default-constructed ones. Reading past the mark
// returns nil(), an element that belongs to the class and is recognised by its address.
#pragma once

#include <ncamcontainer/co_nil.h>
#include <ncamcontainer/page_iterator.h>
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
    using value_type = T;
    using ElementIterator = nmk_container::PageIterator<coPageArr, T>;
    using ConstElementIterator = nmk_container::PageIterator<const coPageArr, const T>;

    /// Pages of 256 elements; a page table of 5 pages, growing by 10.
    coPageArr() = default;

    /// Pages of 2 to the power `shift` elements (0 to 30); the page table has room for
    /// `table_start` pages at first and grows by `table_growth` (each at least 1). Arguments
    /// outside their range count as the nearest limit.
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

    /// Takes the page size of `other` and copies of its elements.
    void become(utCopy, const coPageArr& other) {
        if (this == &other) return;
        clear();
        take_paging(other);
        copy(0, other, 0, other.m_mark);
    }

    /// What reading returns past the mark: default-constructed, one object for all arrays of this
    /// type. Made on first use; safe from any thread.
    static const T& nil() { return nmk_container::nil_element<coPageArr, T>(); }

    /// The high-water mark: one more than the highest index in use.
    int size() const noexcept { return m_mark; }

    /// Number of elements in a page.
    int page_size() const noexcept { return 1 << m_shift; }

    /// Number of pages that exist.
    int pages() const noexcept { return static_cast<int>(m_pages.size()); }

    /// The element at `index`, which must be at least 0. Missing pages up to it are made, and the
    /// mark is raised to `index` + 1 when it is lower; it is never lowered.
    T& operator[](int index) {
        if (index >= m_mark) {
            get_block(index >> m_shift);
            m_mark = index + 1;
        }
        return element_at(index);
    }

    /// The element at `index`; nil() when that is below 0 or not below size(). Adds nothing.
    const T& operator[](int index) const {
        return index >= 0 && index < m_mark ? element_at(index) : nil();
    }

    /// The elements below the mark, in order; changing the array keeps the iterators valid.
    ElementIterator begin() noexcept { return {*this, 0}; }
    ElementIterator end() noexcept { return {*this, m_mark}; }
    ConstElementIterator begin() const noexcept { return {*this, 0}; }
    ConstElementIterator end() const noexcept { return {*this, m_mark}; }

    /// Appends a copy of `element`, which may be an element of this array.
    void add(const T& element) { (*this)[m_mark] = element; }

    /// Keeps the first `keep` elements and frees the pages past them.
    void clear(int keep = 0) { shrink(keep, 0); }

    /// Keeps the first `keep` elements, and the pages that hold these and `spare` more elements;
    /// the other pages are freed.
    void shrink(int keep, int spare);

    /// Copies `count` elements of `source`, which may be this array, from the index `from` to the
    /// index `to` and upwards. Where `source` ends, copies of nil() follow.
    void copy(int to, const coPageArr& source, int from, int count);

    /// Copies `count` adjacent elements at `source` to the index `to` and upwards.
    void copyin(int to, const T* source, int count) {
        for (int i = 0; i < count; ++i) (*this)[to + i] = source[i];
    }

    /// Copies `count` elements from the index `from` upwards to adjacent elements at `target`.
    /// Where the array ends, copies of nil() follow.
    void copyout(int from, T* target, int count) const {
        for (int i = 0; i < count; ++i) target[i] = (*this)[from + i];
    }

    /// Reverses the order of the elements.
    void reverse() {
        for (int low = 0, high = m_mark - 1; low < high; ++low, --high) {
            using std::swap;
            swap(element_at(low), element_at(high));
        }
    }

    /// Releases memory that is not needed; non-zero when anything changed.
    ///
    /// With fewer elements than one page holds, the page size is halved while they still fit; an
    /// empty array frees all its pages and keeps its page size. Otherwise the pages past the mark
    /// are freed. Elements move when the page size changes.
    int repaginate();

    /// A read position before the first element.
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
    T& element_at(int index) const noexcept {
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
    for (int i = kept; i < past; ++i) element_at(i) = T();
    m_mark = kept;
}

template <class T>
void coPageArr<T>::copy(int to, const coPageArr& source, int from, int count) {
    if (count <= 0) return;
    (*this)[to + count - 1];
    if (this == &source && from < to) {
        for (int i = count - 1; i >= 0; --i) element_at(to + i) = source[from + i];
    } else {
        for (int i = 0; i < count; ++i) element_at(to + i) = source[from + i];
    }
}

template <class T>
int coPageArr<T>::repaginate() {
    const int shift = m_mark > 0 && m_mark < page_size() ? shift_holding_the_elements() : m_shift;
    if (shift == m_shift) return free_pages_past(m_mark) ? 1 : 0;
    coPageArr smaller(shift, m_table_start, m_table_growth);
    for (int i = 0; i < m_mark; ++i) smaller[i] = std::move(element_at(i));
    *this = std::move(smaller);
    return 1;
}

/// A read position in a paged array; -1 means before the first element.
template <class T>
class coPageArr<T>::coIterator {
  public:
    explicit coIterator(const coPageArr& array) : m_array(&array) {}

    /// Moves to the first element; 0 when the array is empty.
    int do_first() {
        m_index = -1;
        return ++*this;
    }

    /// Moves forwards by one; 0 at the end, and the position is then before the first again.
    int operator++() {
        m_index = m_index + 1 < m_array->size() ? m_index + 1 : -1;
        return m_index >= 0 ? 1 : 0;
    }

    /// Index of the element, from 0; -1 before the first.
    int index() const noexcept { return m_index; }

    /// The element at the position; the array's nil() before the first.
    const T& operator*() const { return (*m_array)[m_index]; }
    const T* operator->() const { return &(*m_array)[m_index]; }

  private:
    const coPageArr* m_array;
    int m_index = -1;
};
