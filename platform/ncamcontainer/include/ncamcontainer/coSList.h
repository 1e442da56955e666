// coSList: a singly linked list, read and changed through a cursor.
//
// The same shape as coDList with one link less for each element; stepping back therefore walks from
// the head. A position is before the first element (index -1) or on an element, and walking off
// either end comes back to before the first and answers 0.
//
// A position goes on meaning the same element while others come and go, but its index is only kept
// right for changes made through that position itself.
#pragma once

#include <ncamcontainer/coListPosition.h>
#include <utils/utCopy.h>

#include <initializer_list>
#include <utility>

/// One element with the one behind it; null at the tail.
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

    int size() const noexcept { return m_count; }

    /// Puts a copy of `element` at the head, or at the tail, and answers it.
    T& insert_first(const T& element) { return insert_behind(nullptr, element)->element; }
    T& insert_last(const T& element) { return insert_behind(m_tail, element)->element; }

    /// Drops the head; 0 when the list is empty.
    int remove_first() noexcept { return remove_behind(nullptr); }

    /// Drops the tail, which is looked for from the head; 0 when the list is empty.
    int remove_last() noexcept { return remove_behind(before(m_tail)); }

    /// The element at the head; the list must have one.
    T& read_first() noexcept { return m_head->element; }
    const T& read_first() const noexcept { return m_head->element; }

    void clear() noexcept {
        while (remove_first() != 0) {
        }
    }

    /// Takes copies of the elements of `other`, in their order.
    void become(utCopy, const coSList& other) {
        if (this == &other) return;
        clear();
        for (const Link* link = other.m_head; link != nullptr; link = link->next) {
            insert_last(link->element);
        }
    }

  private:
    using Link = coSLink<T>;

    void swap(coSList& other) noexcept {
        std::swap(m_head, other.m_head);
        std::swap(m_tail, other.m_tail);
        std::swap(m_count, other.m_count);
    }

    // The link in front of `link`, or null when that is the head.
    Link* before(const Link* link) const noexcept {
        Link* found = nullptr;
        for (Link* walk = m_head; walk != link; walk = walk->next) found = walk;
        return found;
    }

    // Null stands for the place in front of the head, here and below.
    Link* insert_behind(Link* place, const T& element) {
        Link* const link = new Link(element);
        Link*& from = place != nullptr ? place->next : m_head;
        link->next = from;
        from = link;
        if (m_tail == place) m_tail = link;
        ++m_count;
        return link;
    }

    int remove_behind(Link* place) noexcept {
        Link*& from = place != nullptr ? place->next : m_head;
        Link* const gone = from;
        if (gone == nullptr) return 0;
        from = gone->next;
        if (m_tail == gone) m_tail = place;
        --m_count;
        delete gone;
        return 1;
    }

    Link* m_head = nullptr;
    Link* m_tail = nullptr;
    int m_count = 0;
};

/// A read position: the list, the link and the index.
template <class T>
class coSList<T>::coIterator : public coListPosition<coSList<T>, typename coSList<T>::Link, T> {
    using Position = coListPosition<coSList<T>, typename coSList<T>::Link, T>;

  public:
    explicit coIterator(const coSList& list) noexcept : Position(list) {}

    /// Goes on by one; 0 at the end.
    int operator++() noexcept {
        this->stand_on(this->m_link != nullptr ? this->m_link->next : this->m_list->m_head,
                       this->m_index + 1);
        return this->valid();
    }

    /// Goes back by one, from before the first to the tail; walks from the head.
    int operator--() noexcept {
        return set_index(this->m_link != nullptr ? this->m_index - 1 : this->m_list->m_count - 1);
    }

    /// Goes on by `steps` (back, where negative); 0 when that runs off an end.
    int operator+=(int steps) noexcept {
        if (steps < 0) return operator-=(-steps);
        for (; steps > 0; --steps) {
            if (++*this == 0) return 0;
        }
        return this->valid();
    }

    /// Goes back by `steps` (on, where negative), walking from the head once; 0 when that runs
    /// off an end.
    int operator-=(int steps) noexcept {
        if (steps < 0) return operator+=(-steps);
        if (steps == 0) return this->valid();
        return set_index((this->m_link != nullptr ? this->m_index : this->m_list->m_count) - steps);
    }

    /// Goes to the element at `index`; 0, and before the first, when there is none.
    int set_index(int index) noexcept {
        if (index < 0 || index >= this->m_list->m_count) {
            this->reset();
            return 0;
        }
        if (this->m_link == nullptr || index < this->m_index)
            this->stand_on(this->m_list->m_head, 0);
        while (this->m_index < index) this->stand_on(this->m_link->next, this->m_index + 1);
        return 1;
    }
};

/// A position that can also change the list where it stands. Before the first element, "after" is
/// at the head and "before" is at the tail.
template <class T>
class coSList<T>::coCursor : public coSList<T>::coIterator {
  public:
    explicit coCursor(coSList& list) noexcept : coIterator(list), m_target(&list) {}

    T& read() const noexcept { return this->m_link->element; }
    T& operator*() const noexcept { return this->m_link->element; }
    T* operator->() const noexcept { return &this->m_link->element; }

    /// Puts a copy of `element` behind the position, which stays where it is.
    void insert_after(const T& element) { m_target->insert_behind(this->m_link, element); }

    /// Puts a copy of `element` in front of the position, which stays on its element.
    void insert_before(const T& element) {
        if (this->m_link == nullptr) {
            m_target->insert_last(element);
        } else {
            m_target->insert_behind(m_target->before(this->m_link), element);
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
        if (this->m_link == nullptr) return 0;
        Link* const place = m_target->before(this->m_link);
        this->stand_on(this->m_link->next, this->m_index);
        return m_target->remove_behind(place);
    }

    /// Takes out the element under the position, which steps back one; 0 when the position was on
    /// no element.
    int remove_backwards() noexcept {
        if (this->m_link == nullptr) return 0;
        Link* const place = m_target->before(this->m_link);
        this->stand_on(place, this->m_index - 1);
        return m_target->remove_behind(place);
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
        if (this->m_link != nullptr && this->m_link == m_target->m_tail) --*this;
        return m_target->remove_last();
    }

  private:
    coSList* m_target;
};
