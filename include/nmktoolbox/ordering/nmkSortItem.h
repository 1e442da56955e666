// nmkSortItem: the root of everything that a sorter can put in order.
//
// An item carries one number for its caller, the index, through every sort, so that the caller can
// tell afterwards which item is which. The family goes on with nmkSortItemWithPoint,
// nmkSortItemWithEndPoint and the concrete nmkSortItemLine; callers derive items of their own.
//
// Items travel by nmkSortItemPrf and are not safe for use from two threads at once.
#pragma once

#include <mfc/CObject.h>
#include <nmktoolbox/export.h>
#include <utils/utTypeID.h>

/// An item to be sorted. On its own it has no place; see nmkSortItemWithPoint.
class NMKTOOLBOX_EXPORT nmkSortItem : public CObject {
  public:
    /// The index of an item that was never given one.
    static constexpr int no_index = -2147483647;  // 0x80000001

    nmkSortItem();
    nmkSortItem(const nmkSortItem& other);
    nmkSortItem& operator=(const nmkSortItem& other);

    CRuntimeClass* GetRuntimeClass() const override;
    ~nmkSortItem() override;
    virtual const utTypeID& ut_dynamic_type() const;
    virtual int ut_is_kind_of(const utTypeID& type) const;

    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static const utTypeID& ut_static_type();
    static nmkSortItem* ut_dynamic_cast(nmkSortItem* item);
    static const nmkSortItem* ut_dynamic_cast(const nmkSortItem* item);

    /// The caller's number for this item; no_index until set.
    int index() const { return m_index; }
    void set_index(int index) { m_index = index; }

  private:
    int m_index;
};
