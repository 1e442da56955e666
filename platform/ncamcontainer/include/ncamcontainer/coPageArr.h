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
        : shift_(std::clamp(shift, 0, 30)),
          table_start_(std::max(table_start, 1)),
          table_growth_(std::max(table_growth, 1)) {}
    coPageArr(utCopy, const coPageArr& other) { become(utCopy(), other); }
    coPageArr(const coPageArr& other) { become(utCopy(), other); }
    coPageArr(coPageArr&& other) noexcept { *this = std::move(other); }

    coPageArr& operator=(const coPageArr& other) {
        become(utCopy(), other);
        return *this;
    }
    coPageArr& operator=(coPageArr&& other) noexcept {
        if (this == &other) return *this;
        mark_ = std::exchange(other.mark_, 0);
        pages_ = std::move(other.pages_);
        other.pages_.clear();
        take_paging(other);
        return *this;
    }

    /// Takes the page size and the elements of `other`.
    void become(utCopy, const coPageArr& other) {
        if (this == &other) return;
        clear();
        take_paging(other);
        copy(0, other, 0, other.mark_);
    }

    /// The high-water mark: one more than the highest index in use.
    int size() const noexcept { return mark_; }

    int page_size() const noexcept { return 1 << shift_; }

    /// Number of pages that exist.
    int pages() const noexcept { return static_cast<int>(pages_.size()); }

    /// The element at `index` (at least 0). Pages are made up to it where there are none, and the
    /// mark is raised to `index` + 1 where it is lower; it is never lowered.
    T& operator[](int index) {
        if (index >= mark_) {
            get_block(index >> shift_);
            mark_ = index + 1;
        }
        return place(index);
    }

    /// `index` must be at least 0 and below size().
    const T& operator[](int index) const noexcept { return place(index); }

    /// Appends a copy of `element`, which may be an element of this array.
    void add(const T& element) { (*this)[mark_] = element; }

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
        for (int low = 0, high = mark_ - 1; low < high; ++low, --high) {
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
            if (pages_.size() == pages_.capacity()) reserve_table();
            pages_.push_back(std::make_unique<T[]>(static_cast<std::size_t>(page_size())));
        }
    }

  private:
    T& place(int index) const noexcept {
        return pages_[static_cast<std::size_t>(index >> shift_)]
                     [static_cast<std::size_t>(index & ((1 << shift_) - 1))];
    }

    void reserve_table() {
        const std::size_t room = pages_.capacity();
        pages_.reserve(room == 0 ? static_cast<std::size_t>(table_start_)
                                 : room + static_cast<std::size_t>(table_growth_));
    }

    void take_paging(const coPageArr& other) noexcept {
        shift_ = other.shift_;
        table_start_ = other.table_start_;
        table_growth_ = other.table_growth_;
    }

    int pages_for(long long elements) const noexcept {
        return static_cast<int>((elements + page_size() - 1) >> shift_);
    }

    int shift_holding_the_elements() const noexcept {
        int shift = shift_;
        while (shift > 0 && mark_ <= (1 << (shift - 1))) --shift;
        return shift;
    }

    bool free_pages_past(long long elements) {
        const std::size_t kept = static_cast<std::size_t>(pages_for(elements));
        if (pages_.size() <= kept) return false;
        pages_.resize(kept);
        return true;
    }

    int mark_ = 0;
    int shift_ = 8;
    int table_start_ = 5;
    int table_growth_ = 10;
    std::vector<std::unique_ptr<T[]>> pages_;
};

template <class T>
void coPageArr<T>::shrink(int keep, int spare) {
    const int kept = std::clamp(keep, 0, mark_);
    free_pages_past(static_cast<long long>(kept) + std::max(spare, 0));
    const long long in_pages = static_cast<long long>(pages()) << shift_;
    const int past = static_cast<int>(std::min<long long>(mark_, in_pages));
    for (int i = kept; i < past; ++i) place(i) = T();
    mark_ = kept;
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
    const int shift = mark_ > 0 && mark_ < page_size() ? shift_holding_the_elements() : shift_;
    if (shift == shift_) return free_pages_past(mark_) ? 1 : 0;
    coPageArr smaller(shift, table_start_, table_growth_);
    for (int i = 0; i < mark_; ++i) smaller[i] = std::move(place(i));
    *this = std::move(smaller);
    return 1;
}

/// A read position in a paged array; -1 means before the first element.
template <class T>
class coPageArr<T>::coIterator {
  public:
    explicit coIterator(const coPageArr& array) : array_(&array) {}

    /// Goes to the first element; 0 when the array is empty.
    int do_first() {
        index_ = -1;
        return ++*this;
    }

    /// Goes on by one; 0 at the end, and the position is then before the first again.
    int operator++() {
        index_ = index_ + 1 < array_->size() ? index_ + 1 : -1;
        return index_ >= 0 ? 1 : 0;
    }

    int index() const noexcept { return index_; }

    /// Only while the position is on an element.
    const T& operator*() const { return (*array_)[index_]; }
    const T* operator->() const { return &(*array_)[index_]; }

  private:
    const coPageArr* array_;
    int index_ = -1;
};
