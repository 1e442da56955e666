// nmkSortItemLine: the concrete item, a straight line from a start to an end.
//
// A sorter may find that the line is better travelled backwards. It then negates the item's flag
// and leaves the two points alone, so the caller must check reversed() before cutting.
#pragma once

#include <nmktoolbox/ordering/nmkSortItemWithEndPoint.h>

/// A line that may be travelled in either direction.
class NMKTOOLBOX_EXPORT nmkSortItemLine : public nmkSortItemWithEndPoint {
  public:
    nmkSortItemLine(const giPoint3& start, const giPoint3& end);
    nmkSortItemLine(const nmkSortItemLine& other);
    nmkSortItemLine& operator=(const nmkSortItemLine& other);

    CRuntimeClass* GetRuntimeClass() const override;
    ~nmkSortItemLine() override;
    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// The start and the end as given, whatever reversed() returns.
    const giPoint3& get_point() const override;
    const giPoint3& get_end_point() const override;

    /// Reverses the direction of travel; a second call restores it.
    void reverse();
    /// 1 when the line is to be travelled from end to start.
    int reversed() const { return reversed_flag; }

    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static const utTypeID& ut_static_type();
    static nmkSortItemLine* ut_dynamic_cast(nmkSortItem* item);
    static const nmkSortItemLine* ut_dynamic_cast(const nmkSortItem* item);

  private:
    giPoint3 end_point;
    int reversed_flag = 0;
};
