// nmkSortItemWithEndPoint: an item that is entered at one point and left at another.
//
// An end point with any coordinate at its unset marker counts as none: an item without an end
// returns such a point, and is then ordered by its point alone.
#pragma once

#include <nmktoolbox/ordering/nmkSortItemWithPoint.h>

/// An item with a start, get_point, and an end.
class NMKTOOLBOX_EXPORT nmkSortItemWithEndPoint : public nmkSortItemWithPoint {
  public:
    nmkSortItemWithEndPoint();
    nmkSortItemWithEndPoint(const nmkSortItemWithEndPoint& other);
    nmkSortItemWithEndPoint& operator=(const nmkSortItemWithEndPoint& other);

    CRuntimeClass* GetRuntimeClass() const override;
    ~nmkSortItemWithEndPoint() override;
    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// Where the item is left when it is travelled forwards.
    virtual const giPoint3& get_end_point() const = 0;

    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static const utTypeID& ut_static_type();
    static nmkSortItemWithEndPoint* ut_dynamic_cast(nmkSortItem* item);
    static const nmkSortItemWithEndPoint* ut_dynamic_cast(const nmkSortItem* item);
};
