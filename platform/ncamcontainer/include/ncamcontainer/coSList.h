// coSList: a singly linked list, read and changed through a cursor.
//
// It works like coDList with one link less for each element; stepping backwards therefore starts
// from the head. A position is before the first element (index -1) or on an element; a step past
// either end returns 0 and leaves the position before the first element. Reading where there is no
// element returns nil(), an element that belongs to the class and is recognised by its address.
//
// A position stays on its element while others are inserted and removed, but its index is updated
// only for changes made through that position itself.
#pragma once

#include <ncamcontainer/coListPosition.h>
#include <ncamcontainer/co_nil.h>
#include <ncamcontainer/list_iterator.h>
#include <utils/utCopy.h>

#include <initializer_list>
#include <utility>

/// One element and the link of the next one, which is null at the tail.
template <class T>
struct coSLink {
    explicit coSLink(const T& value) : element(value) {}

    coSLink* next = nullptr;
    T element;
};

template <class T>
class coSList {
  public:
    class coIterator;
    class coCursor;
    using iterator = nmk_container::ListIterator<coSLink<T>, T>;
    using const_iterator = nmk_container::ListIterator<coSLink<T>, const T>;

    coSList() = default;
    coSList(std::initializer_list<T> elements) {
        for (const T& element : elements) insert_last(element);
    }
    coSList(utCopy, const coSList& other) { become(utCopy(), other); }
    coSList(const coSList& other) { become(utCopy(), other); }
    coSList(coSList&& other) noexcept { swap(other); }
    coSList& operator=(const coSList& other) {
        become(utCopy(), other);
        return *this;
    }
    coSList& operator=(coSList&& other) noexcept {
        swap(other);
        return *this;
    }
    ~coSList() { clear(); }

    /// What reading returns where there is no element: default-constructed, one object for all
    /// lists of this type. Made on first use; safe from any thread.
    static const T& nil() { return nmk_container::nil_element<coSList, T>(); }

    /// Number of elements.
    int size() const noexcept { return m_count; }

    /// Inserts a copy of `element` at the head, or at the tail, and returns the copy.
    T& insert_first(const T& element) { return insert_after(nullptr, element)->element; }
    T& insert_last(const T& element) { return insert_after(m_tail, element)->element; }

    /// Removes the head; returns 0 when the list is empty.
    int remove_first() noexcept { return remove_after(nullptr); }

    /// Removes the tail, whose predecessor is searched for from the head; returns 0 when the list
    /// is empty.
    int remove_last() noexcept { return remove_after(before(m_tail)); }

    /// The element at the head, or at the tail; nil() when the list is empty.
    const T& read_first() const { return m_head != nullptr ? m_head->element : nil(); }
    const T& read_last() const { return m_tail != nullptr ? m_tail->element : nil(); }

    /// Removes all elements.
    void clear() noexcept {
        while (remove_first() != 0) {
        }
    }

    /// Replaces the elements by copies of those of `other`, in their order.
    void become(utCopy, const coSList& other) {
        if (this == &other) return;
        clear();
        for (const T& element : other) insert_last(element);
    }

    /// The elements from head to tail, which may be changed through the iterators.
    iterator begin() noexcept { return iterator(m_head); }
    iterator end() noexcept { return iterator(); }
    const_iterator begin() const noexcept { return const_iterator(m_head); }
    const_iterator end() const noexcept { return const_iterator(); }

  private:
    using Link = coSLink<T>;

    void swap(coSList& other) noexcept {
        std::swap(m_head, other.m_head);
        std::swap(m_tail, other.m_tail);
        std::swap(m_count, other.m_count);
    }

    // The link before `link`, or null when `link` is the head.
    Link* before(const Link* link) const noexcept {
        Link* previous = nullptr;
        for (Link* each = m_head; each != link; each = each->next) previous = each;
        return previous;
    }

    // The new head when `previous` is null; likewise below.
    Link* insert_after(Link* previous, const T& element) {
        Link* const link = new Link(element);
        Link*& next = previous != nullptr ? previous->next : m_head;
        link->next = next;
        next = link;
        if (m_tail == previous) m_tail = link;
        ++m_count;
        return link;
    }

    int remove_after(Link* previous) noexcept {
        Link*& next = previous != nullptr ? previous->next : m_head;
        Link* const removed = next;
        if (removed == nullptr) return 0;
        next = removed->next;
        if (m_tail == removed) m_tail = previous;
        --m_count;
        delete removed;
        return 1;
    }

    Link* m_head = nullptr;
    Link* m_tail = nullptr;
    int m_count = 0;
};

/// A read position that moves by steps, or to an index.
template <class T>
class coSList<T>::coIterator : public coListPosition<coSList<T>, typename coSList<T>::Link, T> {
    using Position = coListPosition<coSList<T>, typename coSList<T>::Link, T>;

  public:
    explicit coIterator(const coSList& list) noexcept : Position(list) {}

    /// Moves forwards by one element; 0 at the end.
    int operator++() noexcept {
        this->move_to(this->m_link != nullptr ? this->m_link->next : this->m_list->m_head,
                      this->m_index + 1);
        return this->valid();
    }

    /// Moves backwards by one element, from before the first to the tail, starting from the head.
    int operator--() noexcept {
        return set_index(this->m_link != nullptr ? this->m_index - 1 : this->m_list->m_count - 1);
    }

    /// Moves forwards by `steps` (backwards when negative); 0 when that leaves the list.
    int operator+=(int steps) noexcept {
        if (steps < 0) return operator-=(-steps);
        for (; steps > 0; --steps) {
            if (++*this == 0) return 0;
        }
        return this->valid();
    }

    /// Moves backwards by `steps` (forwards when negative), starting from the head; 0 when that
    /// leaves the list.
    int operator-=(int steps) noexcept {
        if (steps < 0) return operator+=(-steps);
        if (steps == 0) return this->valid();
        return set_index((this->m_link != nullptr ? this->m_index : this->m_list->m_count) - steps);
    }

    /// Moves to the element at `index`; 0, and before the first, when `index` is outside the list.
    int set_index(int index) noexcept {
        if (index < 0 || index >= this->m_list->m_count) {
            this->reset();
            return 0;
        }
        if (this->m_link == nullptr || index < this->m_index) {
            this->move_to(this->m_list->m_head, 0);
        }
        while (this->m_index < index) this->move_to(this->m_link->next, this->m_index + 1);
        return 1;
    }
};

/// A position that can also change the list. Before the first element, "after" is at the head and
/// "before" is at the tail.
template <class T>
class coSList<T>::coCursor : public coSList<T>::coIterator {
  public:
    explicit coCursor(coSList& list) noexcept : coIterator(list), m_target(&list) {}

    /// The element at the position, for changing it; the position must be on an element.
    T& element() const noexcept { return this->m_link->element; }

    /// Inserts a copy of `element` after the position, which does not move.
    void insert_after(const T& element) { m_target->insert_after(this->m_link, element); }

    /// Inserts a copy of `element` before the position, which stays on its element.
    void insert_before(const T& element) {
        if (this->m_link == nullptr) {
            m_target->insert_last(element);
        } else {
            m_target->insert_after(m_target->before(this->m_link), element);
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
        if (this->m_link == nullptr) return 0;
        Link* const previous = m_target->before(this->m_link);
        this->move_to(this->m_link->next, this->m_index);
        return m_target->remove_after(previous);
    }

    /// Removes the element at the position, which moves back by one; 0 when the position was not
    /// on an element.
    int remove_backwards() noexcept {
        if (this->m_link == nullptr) return 0;
        Link* const previous = m_target->before(this->m_link);
        this->move_to(previous, this->m_index - 1);
        return m_target->remove_after(previous);
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
        if (this->m_link != nullptr && this->m_link == m_target->m_tail) --*this;
        return m_target->remove_last();
    }

  private:
    coSList* m_target;
};
