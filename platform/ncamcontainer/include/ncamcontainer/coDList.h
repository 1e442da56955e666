// coDList: a doubly linked list, read and changed through cursors.
//
// A position is before the first element (index -1) or on an element. Walking off either end comes
// back to before the first, and answers 0, so that `while (++it)` walks the whole list and leaves
// the position ready for the next walk; `while (--it)` walks it from the tail.
//
// A position goes on meaning the same element while others come and go, but its index is only kept
// right for changes made through that position itself. Taking an element out by any other way
// leaves the positions on it without meaning; so does `clear`, until they are reset.
#pragma once

#include <ncamcontainer/coListPosition.h>
#include <utils/utCopy.h>

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

/// One element with its neighbours; null at the ends.
template <class T>
struct coDLink {
    explicit coDLink(const T& value) : element(value) {}
    explicit coDLink(T&& value) : element(std::move(value)) {}

    coDLink* next = nullptr;
    coDLink* previous = nullptr;
    T element;
};

/// The core of the list: head, tail and count.
template <class T>
class coDListB {
  public:
    class coIteratorB;
    class coIterator;
    class coCursor;
    template <class Element>
    class Walk;

    coDListB() = default;
    coDListB(const coDListB&) = delete;
    coDListB& operator=(const coDListB&) = delete;
    ~coDListB() { clear(); }

    int size() const noexcept { return m_count; }

    /// Puts a copy of `element` at the head, and answers it.
    T& insert_first(const T& element) { return insert(element, nullptr, m_head)->element; }

    /// Puts a copy of `element` at the tail, and answers it.
    T& insert_last(const T& element) { return insert(element, m_tail, nullptr)->element; }

    /// Drops the head; 0 when the list is empty.
    int remove_first() { return remove(m_head); }

    /// Drops the tail; 0 when the list is empty.
    int remove_last() { return remove(m_tail); }

    /// The element at the head, or at the tail; the list must have one.
    T& read_first() { return m_head->element; }
    const T& read_first() const { return m_head->element; }
    T& read_last() { return m_tail->element; }
    const T& read_last() const { return m_tail->element; }

    void clear() noexcept {
        while (remove_first() != 0) {
        }
    }

    /// Takes copies of the elements of `other`, in their order.
    void become(utCopy, const coDListB& other) {
        if (this == &other) return;
        clear();
        for (const T& element : other) insert_last(element);
    }

    Walk<T> begin() noexcept { return Walk<T>(m_head); }
    Walk<T> end() noexcept { return Walk<T>(nullptr); }
    Walk<const T> begin() const noexcept { return Walk<const T>(m_head); }
    Walk<const T> end() const noexcept { return Walk<const T>(nullptr); }

    /// Takes the elements of `other` over, behind those that are here, and leaves it empty; they
    /// stay where they are in memory. Positions in `other` must be reset.
    void take_last(coDListB& other) noexcept {
        if (this == &other || other.m_head == nullptr) return;
        other.m_head->previous = m_tail;
        (m_tail != nullptr ? m_tail->next : m_head) = other.m_head;
        m_tail = std::exchange(other.m_tail, nullptr);
        other.m_head = nullptr;
        m_count += std::exchange(other.m_count, 0);
    }

    /// Takes the elements of `other` over in a new order, and leaves it empty: `places` are the
    /// places in `other`, from 0, each of them once. They are moved to links of their own, made one
    /// after the other, so that a walk of a long list does not jump about in memory.
    void take_last(coDListB& other, const std::vector<int>& places) {
        std::vector<T> elements;
        elements.reserve(places.size());
        for (T& element : other) elements.push_back(std::move(element));
        other.clear();
        for (const int place : places) {
            put(new Link(std::move(elements[static_cast<std::size_t>(place)])), m_tail, nullptr);
        }
    }

  protected:
    void swap(coDListB& other) noexcept {
        std::swap(m_head, other.m_head);
        std::swap(m_tail, other.m_tail);
        std::swap(m_count, other.m_count);
    }

  private:
    using Link = coDLink<T>;

    Link* insert(const T& element, Link* before, Link* after) {
        return put(new Link(element), before, after);
    }

    Link* put(Link* link, Link* before, Link* after) noexcept {
        link->previous = before;
        link->next = after;
        (before != nullptr ? before->next : m_head) = link;
        (after != nullptr ? after->previous : m_tail) = link;
        ++m_count;
        return link;
    }

    int remove(Link* link) noexcept {
        if (link == nullptr) return 0;
        (link->previous != nullptr ? link->previous->next : m_head) = link->next;
        (link->next != nullptr ? link->next->previous : m_tail) = link->previous;
        --m_count;
        delete link;
        return 1;
    }

    Link* m_head = nullptr;
    Link* m_tail = nullptr;
    int m_count = 0;
};

/// A read position: the list, the link and the index.
template <class T>
class coDListB<T>::coIteratorB : public coListPosition<coDListB<T>, coDLink<T>, T> {
    using Position = coListPosition<coDListB<T>, coDLink<T>, T>;

  public:
    /// Goes on by `steps` (back, where negative); 0 when that runs off an end.
    int operator+=(int steps) {
        for (; steps > 0; --steps) {
            if (step_forwards() == 0) return 0;
        }
        for (; steps < 0; ++steps) {
            if (step_backwards() == 0) return 0;
        }
        return this->m_link != nullptr ? 1 : 0;
    }

    /// Goes back by `steps` (on, where negative); 0 when that runs off an end.
    int operator-=(int steps) {
        for (; steps > 0; --steps) {
            if (step_backwards() == 0) return 0;
        }
        return steps < 0 ? operator+=(-steps) : (this->m_link != nullptr ? 1 : 0);
    }

  protected:
    explicit coIteratorB(const coDListB& list) noexcept : Position(list) {}

    int step_forwards() noexcept {
        this->stand_on(this->m_link != nullptr ? this->m_link->next : this->m_list->m_head,
                       this->m_index + 1);
        return this->valid();
    }

    int step_backwards() noexcept {
        if (this->m_link != nullptr) {
            this->stand_on(this->m_link->previous, this->m_index - 1);
        } else {
            this->stand_on(this->m_list->m_tail, this->m_list->m_count - 1);
        }
        return this->valid();
    }
};

/// A read position that can step and jump.
template <class T>
class coDListB<T>::coIterator : public coDListB<T>::coIteratorB {
  public:
    explicit coIterator(const coDListB& list) noexcept : coIteratorB(list) {}

    /// Goes on by one, or back by one; 0 when that runs off the end.
    int operator++() noexcept { return this->step_forwards(); }
    int operator--() noexcept { return this->step_backwards(); }

    /// Goes to the element at `index` by the shortest way, from the head, the tail or where the
    /// position is; 0, and before the first, when there is no such element.
    int set_index(int index) noexcept {
        if (index < 0 || index >= this->m_list->size()) {
            this->reset();
            return 0;
        }
        start_nearest(index);
        while (this->m_index < index) this->step_forwards();
        while (this->m_index > index) this->step_backwards();
        return 1;
    }

  private:
    void start_nearest(int index) noexcept {
        const int from_tail = this->m_list->size() - 1 - index;
        const int from_head = index;
        const int nearest_end = from_head < from_tail ? from_head : from_tail;
        const int away = index > this->m_index ? index - this->m_index : this->m_index - index;
        if (this->m_link != nullptr && away <= nearest_end) return;
        this->reset();
        if (from_head <= from_tail) {
            this->step_forwards();
        } else {
            this->step_backwards();
        }
    }
};

/// A position that can also change the list where it stands.
///
/// Before the first element, "after" is at the head and "before" is at the tail, as if the list
/// were a ring that the position opens.
template <class T>
class coDListB<T>::coCursor : public coDListB<T>::coIterator {
  public:
    explicit coCursor(coDListB& list) noexcept : coIterator(list), m_target(&list) {}

    T& read() const noexcept { return this->m_link->element; }
    T& operator*() const noexcept { return this->m_link->element; }
    T* operator->() const noexcept { return &this->m_link->element; }

    /// Puts a copy of `element` behind the position, which stays where it is.
    void insert_after(const T& element) {
        if (this->m_link == nullptr) {
            m_target->insert_first(element);
        } else {
            m_target->insert(element, this->m_link, this->m_link->next);
        }
    }

    /// Puts a copy of `element` in front of the position, which stays on its element.
    void insert_before(const T& element) {
        if (this->m_link == nullptr) {
            m_target->insert_last(element);
        } else {
            m_target->insert(element, this->m_link->previous, this->m_link);
            ++this->m_index;
        }
    }

    /// Puts a copy of `element` at the head; the position stays on its element.
    void insert_first(const T& element) {
        m_target->insert_first(element);
        if (this->m_link != nullptr) ++this->m_index;
    }

    void insert_last(const T& element) { m_target->insert_last(element); }

    /// Takes out the element under the position, which goes on to the next one, or before the
    /// first when there is none; 0 when the position was on no element.
    int remove() noexcept {
        Link* const gone = this->m_link;
        if (gone == nullptr) return 0;
        this->stand_on(gone->next, this->m_index);
        return m_target->remove(gone);
    }

    /// Takes out the element under the position, which steps back one, so that the next ++ meets
    /// the element behind the one that went; 0 when the position was on no element.
    int remove_backwards() noexcept {
        Link* const gone = this->m_link;
        if (gone == nullptr) return 0;
        this->stand_on(gone->previous, this->m_index - 1);
        return m_target->remove(gone);
    }

    /// Takes out the head; a position on it goes before the first. 0 when the list is empty.
    int remove_first() noexcept {
        if (this->m_link != nullptr) {
            this->stand_on(this->m_link == m_target->m_head ? nullptr : this->m_link,
                           this->m_index - 1);
        }
        return m_target->remove_first();
    }

    /// Takes out the tail; a position on it steps back one. 0 when the list is empty.
    int remove_last() noexcept {
        if (this->m_link != nullptr && this->m_link == m_target->m_tail) this->step_backwards();
        return m_target->remove_last();
    }

  private:
    coDListB* m_target;
};

/// The pointer-like position of a range-based for loop.
template <class T>
template <class Element>
class coDListB<T>::Walk {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_const_t<Element>;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;

    Walk() = default;
    explicit Walk(coDLink<T>* link) noexcept : m_link(link) {}

    Element& operator*() const noexcept { return m_link->element; }
    Element* operator->() const noexcept { return &m_link->element; }
    Walk& operator++() noexcept {
        m_link = m_link->next;
        return *this;
    }
    Walk operator++(int) noexcept {
        Walk old = *this;
        m_link = m_link->next;
        return old;
    }
    bool operator==(const Walk& other) const noexcept { return m_link == other.m_link; }

  private:
    coDLink<T>* m_link = nullptr;
};

/// The list as callers use it.
template <class T>
class coDList : public coDListB<T> {
  public:
    coDList() = default;
    coDList(std::initializer_list<T> elements) {
        for (const T& element : elements) this->insert_last(element);
    }
    coDList(utCopy, const coDList& other) { this->become(utCopy(), other); }
    coDList(const coDList& other) : coDListB<T>() { this->become(utCopy(), other); }
    coDList(coDList&& other) noexcept { this->swap(other); }
    coDList& operator=(const coDList& other) {
        this->become(utCopy(), other);
        return *this;
    }
    coDList& operator=(coDList&& other) noexcept {
        this->swap(other);
        return *this;
    }
};
