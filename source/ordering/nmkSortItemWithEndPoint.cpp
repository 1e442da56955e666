// nmkSortItemWithEndPoint: the run-time type of an item with a start and an end.
#include <nmktoolbox/ordering/nmkSortItemWithEndPoint.h>

#include "ordering/run_time_type.h"

nmkSortItemWithEndPoint::nmkSortItemWithEndPoint() = default;
nmkSortItemWithEndPoint::nmkSortItemWithEndPoint(const nmkSortItemWithEndPoint&) = default;
nmkSortItemWithEndPoint& nmkSortItemWithEndPoint::operator=(const nmkSortItemWithEndPoint&) =
    default;
nmkSortItemWithEndPoint::~nmkSortItemWithEndPoint() = default;

CRuntimeClass* nmkSortItemWithEndPoint::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkSortItemWithEndPoint::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkSortItemWithEndPoint",
                                          sizeof(nmkSortItemWithEndPoint),
                                          nmkSortItemWithPoint::GetThisClass()};
    return &runtime_class;
}

CRuntimeClass* nmkSortItemWithEndPoint::_GetBaseClass() {
    return nmkSortItemWithPoint::GetThisClass();
}

const utTypeID& nmkSortItemWithEndPoint::ut_static_type() {
    static const utTypeID type("nmkSortItemWithEndPoint", &nmkSortItemWithPoint::ut_static_type());
    return type;
}

const utTypeID& nmkSortItemWithEndPoint::ut_dynamic_type() const { return ut_static_type(); }

int nmkSortItemWithEndPoint::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

nmkSortItemWithEndPoint* nmkSortItemWithEndPoint::ut_dynamic_cast(nmkSortItem* item) {
    return nmk_ordering::cast_to_kind<nmkSortItemWithEndPoint>(item);
}

const nmkSortItemWithEndPoint* nmkSortItemWithEndPoint::ut_dynamic_cast(const nmkSortItem* item) {
    return nmk_ordering::cast_to_kind<const nmkSortItemWithEndPoint>(item);
}
