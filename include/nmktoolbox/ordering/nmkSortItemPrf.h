// nmkSortItemPrf: the shared reference by which items travel through lists and sorters.
//
// It either borrows an item (made from a plain pointer: the item outlives every reference) or owns
// it (made with nmkPtrClaim: the last reference deletes it). It also has a flag that marks the
// reference as invalid without releasing the item. The use counts are atomic.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <nmktoolbox/collections/nmkPtrClaim.h>
#include <nmktoolbox/ordering/nmkSortItem.h>

/// A reference to an item, or to none.
class NMKTOOLBOX_EXPORT nmkSortItemPrf : public coPrf<nmkSortItem> {
  public:
    /// No item, and invalid.
    nmkSortItemPrf() = default;
    /// Borrows: the item is not deleted with the last reference.
    nmkSortItemPrf(nmkSortItem* borrowed)  // NOLINT: callers pass plain pointers to add_item
        : coPrf<nmkSortItem>(coPrfExtern(), borrowed), invalid_flag(0) {}
    /// Owns: the last reference deletes the item.
    nmkSortItemPrf(nmkPtrClaim, nmkSortItem* claimed)
        : coPrf<nmkSortItem>(claimed), invalid_flag(0) {}

    nmkSortItem* operator->() { return get(); }
    const nmkSortItem* operator->() const { return get(); }
    nmkSortItem& operator*() { return *get(); }
    const nmkSortItem& operator*() const { return *get(); }
    nmkSortItem* item() { return get(); }
    const nmkSortItem* item() const { return get(); }

    /// True without an item, and after set_invalid, which keeps the item.
    bool invalid() const { return get() == nullptr || invalid_flag != 0; }
    void set_invalid() { invalid_flag = 1; }

    /// 1 for no item, and for an owning reference that is the only one; a borrowing reference is
    /// never unique.
    int unique() const;

  private:
    int invalid_flag = 1;
};
