// nmkSortList: the list of items that a sorter takes and returns.
//
// A doubly linked list with one cursor of its own. The usual walk is
//
//     while (list.forwards()) use(list.read());
//
// and leaves the cursor before the head again, ready for the next. A walk that was broken off
// continues from the cursor, also when another operation walks the list; reset() starts over. A
// range-based for loop visits all items and leaves the cursor alone.
//
// References stay valid until the item is removed. Not safe from two threads at once.
#pragma once

#include <ncamcontainer/coDList.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>

#include <vector>

using nmkSortItemPrfcoDList = coDList<nmkSortItemPrf>;

/// Items in order, with a cursor.
class NMKTOOLBOX_EXPORT nmkSortList {
  public:
    using iterator = nmkSortItemPrfcoDList::iterator;
    using const_iterator = nmkSortItemPrfcoDList::const_iterator;

    nmkSortList();
    nmkSortList(const nmkSortList&) = delete;
    nmkSortList& operator=(const nmkSortList&) = delete;

    /// Appends one item.
    virtual void add_item(const nmkSortItemPrf& item);
    /// Appends the items of the other list, walking it by its own cursor.
    virtual void add_items(const nmkSortList& other);
    virtual int size() const;
    /// Steps to the next item: 1, or 0 past the last, which puts the cursor before the head again.
    virtual int forwards();
    /// Empties the list and puts the cursor before the head.
    virtual void clear();
    virtual void remove_first();
    /// The first item; an invalid reference when the list is empty.
    virtual nmkSortItemPrf& read_first();
    /// Removes the item under the cursor and steps back one.
    virtual void remove_backwards();
    /// Puts the cursor before the head.
    virtual void reset();
    /// The item under the cursor; an invalid reference when the cursor is before the head.
    virtual nmkSortItemPrf& read();
    virtual ~nmkSortList();

    /// Moves the cursor to a position, counted from 0, and returns the item there; an invalid
    /// reference when there is no such position.
    nmkSortItemPrf& operator[](int position);

    /// For `for (const nmkSortItemPrf& item : list)`: all items, without the cursor.
    iterator begin() { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator begin() const { return m_items.begin(); }
    const_iterator end() const { return m_items.end(); }

  private:
    friend class nmkPointSorter;
    friend class nmkItemSorterGrid;

    /// Moves all items of the other list to the end of this one.
    void take_items(nmkSortList& other);
    /// The same in a new order: `positions` are those of the items in the other list, from 0.
    void take_items(nmkSortList& other, const std::vector<int>& positions);
    nmkSortItemPrf& no_item();

    nmkSortItemPrfcoDList m_items;
    nmkSortItemPrfcoDList::coCursor m_cursor;
    nmkSortItemPrf m_nothing;
};
