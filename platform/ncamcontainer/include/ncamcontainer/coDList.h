// coDList: a doubly linked list, read and changed through cursors.
//
// A position is before the first element (index -1) or on an element. A step past either end
// returns 0 and leaves the position before the first element, so `while (++it)` visits the whole
// list and leaves the position ready for the next pass; `while (--it)` visits it from the tail.
// Reading where there is no element returns nil(), an element that belongs to the class and is
// recognised by its address.
//
// A position stays on its element while others are inserted and removed, but its index is updated
// only for changes made through that position itself. An element that is removed in another way,
// `clear` included, leaves the positions on it invalid until they are reset.
#pragma once

#include <ncamcontainer/coListPosition.h>
#include <ncamcontainer/co_nil.h>
#include <ncamcontainer/list_iterator.h>
#include <utils/utCopy.h>

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

/// One element and the links of its neighbours, which are null at the ends.
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
    using iterator = nmk_container::ListIterator<coDLink<T>, T>;
    using const_iterator = nmk_container::ListIterator<coDLink<T>, const T>;

    coDListB() = default;
    coDListB(const coDListB&) = delete;
    coDListB& operator=(const coDListB&) = delete;
    ~coDListB() { clear(); }

    /// What reading returns where there is no element: default-constructed, one object for all
    /// lists of this type. Made on first use; safe from any thread.
    static const T& nil() { return nmk_container::nil_element<coDListB, T>(); }

    /// Number of elements.
    int size() const noexcept { return m_count; }

    /// Inserts a copy of `element` at the head, and returns the copy.
    T& insert_first(const T& element) { return insert(element, nullptr, m_head)->element; }

    /// Inserts a copy of `element` at the tail, and returns the copy.
    T& insert_last(const T& element) { return insert(element, m_tail, nullptr)->element; }

    /// Removes the head; returns 0 when the list is empty.
    int remove_first() noexcept { return remove(m_head); }

    /// Removes the tail; returns 0 when the list is empty.
    int remove_last() noexcept { return remove(m_tail); }

    /// The element at the head, or at the tail; nil() when the list is empty.
    const T& read_first() const { return m_head != nullptr ? m_head->element : nil(); }
    const T& read_last() const { return m_tail != nullptr ? m_tail->element : nil(); }

    /// Removes all elements.
    void clear() noexcept {
        while (remove_first() != 0) {
        }
    }

    /// Replaces the elements by copies of those of `other`, in their order.
    void become(utCopy, const coDListB& other) {
        if (this == &other) return;
        clear();
        for (const T& element : other) insert_last(element);
    }

    /// The elements from head to tail, which may be changed through the iterators.
    iterator begin() noexcept { return iterator(m_head); }
    iterator end() noexcept { return iterator(); }
    const_iterator begin() const noexcept { return const_iterator(m_head); }
    const_iterator end() const noexcept { return const_iterator(); }

    /// Moves the elements of `other` to the tail of this list and leaves `other` empty. The
    /// elements keep their addresses. Positions in `other` must be reset.
    void take_last(coDListB& other) noexcept {
        if (this == &other || other.m_head == nullptr) return;
        other.m_head->previous = m_tail;
        (m_tail != nullptr ? m_tail->next : m_head) = other.m_head;
        m_tail = std::exchange(other.m_tail, nullptr);
        other.m_head = nullptr;
        m_count += std::exchange(other.m_count, 0);
    }

    /// Moves the elements of `other` to the tail of this list in a new order, and leaves `other`
    /// empty: `order` lists the indices in `other`, from 0, each of them once. The new links are
    /// allocated one after the other, so that reading a long list accesses memory in sequence.
    void take_last(coDListB& other, const std::vector<int>& order) {
        std::vector<T> elements;
        elements.reserve(order.size());
        for (T& element : other) elements.push_back(std::move(element));
        other.clear();
        for (const int index : order) {
            connect(new Link(std::move(elements[static_cast<std::size_t>(index)])), m_tail,
                    nullptr);
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
        return connect(new Link(element), before, after);
    }

    Link* connect(Link* link, Link* before, Link* after) noexcept {
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

/// A read position that moves by a number of steps.
template <class T>
class coDListB<T>::coIteratorB : public coListPosition<coDListB<T>, coDLink<T>, T> {
    using Position = coListPosition<coDListB<T>, coDLink<T>, T>;

  public:
    /// Moves forwards by `steps` (backwards when negative); 0 when that leaves the list.
    int operator+=(int steps) {
        for (; steps > 0; --steps) {
            if (step_forwards() == 0) return 0;
        }
        for (; steps < 0; ++steps) {
            if (step_backwards() == 0) return 0;
        }
        return this->m_link != nullptr ? 1 : 0;
    }

    /// Moves backwards by `steps` (forwards when negative); 0 when that leaves the list.
    int operator-=(int steps) {
        for (; steps > 0; --steps) {
            if (step_backwards() == 0) return 0;
        }
        return steps < 0 ? operator+=(-steps) : (this->m_link != nullptr ? 1 : 0);
    }

  protected:
    explicit coIteratorB(const coDListB& list) noexcept : Position(list) {}

    int step_forwards() noexcept {
        this->move_to(this->m_link != nullptr ? this->m_link->next : this->m_list->m_head,
                      this->m_index + 1);
        return this->valid();
    }

    int step_backwards() noexcept {
        if (this->m_link != nullptr) {
            this->move_to(this->m_link->previous, this->m_index - 1);
        } else {
            this->move_to(this->m_list->m_tail, this->m_list->m_count - 1);
        }
        return this->valid();
    }
};

/// A read position that also moves by one step, or to an index.
template <class T>
class coDListB<T>::coIterator : public coDListB<T>::coIteratorB {
  public:
    explicit coIterator(const coDListB& list) noexcept : coIteratorB(list) {}

    /// Moves forwards or backwards by one element; 0 when that leaves the list.
    int operator++() noexcept { return this->step_forwards(); }
    int operator--() noexcept { return this->step_backwards(); }

    /// Moves to the element at `index`, starting from the head, the tail or the present position,
    /// whichever is nearest; 0, and before the first element, when `index` is outside the list.
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

/// A position that can also change the list.
///
/// Before the first element, "after" is at the head and "before" is at the tail, as if the list
/// were a ring closed by the position.
template <class T>
class coDListB<T>::coCursor : public coDListB<T>::coIterator {
  public:
    explicit coCursor(coDListB& list) noexcept : coIterator(list), m_target(&list) {}

    /// The element at the position, for changing it; the position must be on an element.
    T& element() const noexcept { return this->m_link->element; }

    /// Inserts a copy of `element` after the position, which does not move.
    void insert_after(const T& element) {
        if (this->m_link == nullptr) {
            m_target->insert_first(element);
        } else {
            m_target->insert(element, this->m_link, this->m_link->next);
        }
    }

    /// Inserts a copy of `element` before the position, which stays on its element.
    void insert_before(const T& element) {
        if (this->m_link == nullptr) {
            m_target->insert_last(element);
        } else {
            m_target->insert(element, this->m_link->previous, this->m_link);
            ++this->m_index;
        }
    }

    /// Inserts a copy of `element` at the head; the position stays on its element.
    void insert_first(const T& element) {
        m_target->insert_first(element);
        if (this->m_link != nullptr) ++this->m_index;
    }

    /// Inserts a copy of `element` at the tail; the position stays on its element.
    void insert_last(const T& element) { m_target->insert_last(element); }

    /// Removes the element at the position, which moves to the next element, or before the first
    /// when there is no next one; 0 when the position was not on an element.
    int remove() noexcept {
        Link* const removed = this->m_link;
        if (removed == nullptr) return 0;
        this->move_to(removed->next, this->m_index);
        return m_target->remove(removed);
    }

    /// Removes the element at the position, which moves back by one, so that the next ++ reaches
    /// the element after the removed one; 0 when the position was not on an element.
    int remove_backwards() noexcept {
        Link* const removed = this->m_link;
        if (removed == nullptr) return 0;
        this->move_to(removed->previous, this->m_index - 1);
        return m_target->remove(removed);
    }

    /// Removes the head; a position on it moves before the first. 0 when the list is empty.
    int remove_first() noexcept {
        if (this->m_link != nullptr) {
            this->move_to(this->m_link == m_target->m_head ? nullptr : this->m_link,
                          this->m_index - 1);
        }
        return m_target->remove_first();
    }

    /// Removes the tail; a position on it moves back by one. 0 when the list is empty.
    int remove_last() noexcept {
        if (this->m_link != nullptr && this->m_link == m_target->m_tail) this->step_backwards();
        return m_target->remove_last();
    }

  private:
    coDListB* m_target;
};

/// The list as callers use it: the core with copying, moving and construction from a list.
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
