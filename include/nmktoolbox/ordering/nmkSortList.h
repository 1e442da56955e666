// nmkSortList: the list of items that goes into a sorter and comes out of it.
//
// A doubly linked list with one cursor of its own. The usual walk is
//
//     while (list.forwards()) use(list.read());
//
// and leaves the cursor before the head again, ready for the next. A walk that was broken off goes
// on from where the cursor stands, also when another operation walks the list; reset() starts over.
// References handed out stay good until the item is removed. Not safe from two threads at once.
#pragma once

#include <ncamcontainer/coDList.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>

#include <vector>

using nmkSortItemPrfcoDList = coDList<nmkSortItemPrf>;

/// Items in a row, with a cursor.
class NMKTOOLBOX_EXPORT nmkSortList {
  public:
    using iterator = nmkSortItemPrfcoDList::Walk<nmkSortItemPrf>;
    using const_iterator = nmkSortItemPrfcoDList::Walk<const nmkSortItemPrf>;

    nmkSortList();
    nmkSortList(const nmkSortList&) = delete;
    nmkSortList& operator=(const nmkSortList&) = delete;

    /// Appends one item.
    virtual void add_item(const nmkSortItemPrf& item);
    /// Appends what a walk of the other list gives, by that list's own cursor.
    virtual void add_items(const nmkSortList& other);
    virtual int size() const;
    /// Steps to the next item: 1, or 0 past the last, which puts the cursor before the head again.
    virtual int forwards();
    /// Empties the list and puts the cursor before the head.
    virtual void clear();
    virtual void remove_first();
    /// The first item; an invalid reference in an empty list.
    virtual nmkSortItemPrf& read_first();
    /// Removes the item under the cursor and steps back one.
    virtual void remove_backwards();
    /// Puts the cursor before the head.
    virtual void reset();
    /// The item under the cursor; an invalid reference when the cursor stands before the head.
    virtual nmkSortItemPrf& read();
    virtual ~nmkSortList();

    /// Moves the cursor to a position, counted from 0, and gives the item there.
    nmkSortItemPrf& operator[](int position);

    /// For `for (const nmkSortItemPrf& item : list)`: all items, without the cursor.
    iterator begin() { return items.begin(); }
    iterator end() { return items.end(); }
    const_iterator begin() const { return items.begin(); }
    const_iterator end() const { return items.end(); }

  private:
    friend class nmkPointSorter;
    friend class nmkItemSorterGrid;

    /// Appends all items of the other list, which gives them up.
    void take_items(nmkSortList& other);
    /// The same in a new order: the places of the items in the other list, from 0.
    void take_items(nmkSortList& other, const std::vector<int>& places);
    nmkSortItemPrf& no_item();

    nmkSortItemPrfcoDList items;
    nmkSortItemPrfcoDList::coCursor cursor;
    nmkSortItemPrf nothing;
};
