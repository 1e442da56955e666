// nmkSortItem: the root of everything that a sorter can put in order.
//
// An item carries one number for its caller, the index, through every sort, by which the caller
// identifies it afterwards. The classes derived from it are nmkSortItemWithPoint,
// nmkSortItemWithEndPoint and the concrete nmkSortItemLine; callers derive items of their own.
//
// Items travel by nmkSortItemPrf and are not safe for use from two threads at once.
#pragma once

#include <mfc/CObject.h>
#include <nmktoolbox/export.h>
#include <utils/utTypeID.h>

/// An item to be sorted. It has no point of its own; see nmkSortItemWithPoint.
class NMKTOOLBOX_EXPORT nmkSortItem : public CObject {
  public:
    /// The index of an item whose index was never set.
    static constexpr int no_index = -2147483647;  // 0x80000001

    nmkSortItem();
    nmkSortItem(const nmkSortItem& other);
    nmkSortItem& operator=(const nmkSortItem& other);

    CRuntimeClass* GetRuntimeClass() const override;
    ~nmkSortItem() override;
    virtual const utTypeID& ut_dynamic_type() const;
    /// Non-zero if the type that ut_dynamic_type reports is `type` or derives from it, or if this
    /// class does. A class of your own overrides ut_dynamic_type, and need not override this.
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
