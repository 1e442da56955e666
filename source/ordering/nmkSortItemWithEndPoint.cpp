// nmkSortItemWithEndPoint: the run-time type of an item with a start and an end.
#include <nmktoolbox/ordering/nmkSortItemWithEndPoint.h>

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
    return ut_dynamic_type().is_kind_of(type) ? 1 : 0;
}

nmkSortItemWithEndPoint* nmkSortItemWithEndPoint::ut_dynamic_cast(nmkSortItem* item) {
    const bool is_one = item != nullptr && item->ut_is_kind_of(ut_static_type()) != 0;
    return is_one ? static_cast<nmkSortItemWithEndPoint*>(item) : nullptr;
}

const nmkSortItemWithEndPoint* nmkSortItemWithEndPoint::ut_dynamic_cast(const nmkSortItem* item) {
    const bool is_one = item != nullptr && item->ut_is_kind_of(ut_static_type()) != 0;
    return is_one ? static_cast<const nmkSortItemWithEndPoint*>(item) : nullptr;
}
