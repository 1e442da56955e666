// nmkRefToObjectIdList: references in a row, each valid one once, with a cursor.
//
// The usual walk is `while (list.forwards()) use(list.read());`. Past the last item the cursor is
// before the first again. nmkRefToObjectIdListIT is a cursor of its own that skips invalid items.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>

class NMKTOOLBOX_EXPORT nmkRefToObjectIdList {
  public:
    nmkRefToObjectIdList();

    /// Copies have the same items and their cursor before the first.
    nmkRefToObjectIdList(const nmkRefToObjectIdList& other);
    nmkRefToObjectIdList& operator=(const nmkRefToObjectIdList& other);

    /// Appends a reference, unless a valid item equals it. An invalid one is always appended.
    void add_item(const nmkRefToObjectId& reference);

    /// Puts the cursor before the first item.
    void reset();

    /// Moves the cursor to the next item: 1, or 0 past the last.
    int forwards();

    /// The item under the cursor; an invalid reference where there is none.
    const nmkRefToObjectId& read() const;

    /// Removes the item under the cursor, which goes on to the next item; nothing without an item.
    void remove();

    /// Number of valid items. Moves the cursor past the last item, though it is const.
    int num_valid() const;

  private:
    friend class nmkRefToObjectIdListIT;

    nmkRefToObjectIdcoDList m_items;
    mutable nmkRefToObjectIdcoDList::coCursor m_cursor;
};

class NMKTOOLBOX_EXPORT nmkRefToObjectIdListIT {
  public:
    /// Before the first item of `list`, which must outlive this.
    explicit nmkRefToObjectIdListIT(const nmkRefToObjectIdList& list);

    void reset();

    /// Goes on to the next valid item: 1, or 0 past the last.
    int operator++();

    /// The item under the cursor; an invalid reference where there is none.
    const nmkRefToObjectId& operator()() const;

  private:
    nmkRefToObjectIdcoDList::coIterator m_position;
};
