// nmkSortItemLine: two points and the direction of travel.
#include <nmktoolbox/ordering/nmkSortItemLine.h>

#include "ordering/run_time_type.h"

nmkSortItemLine::nmkSortItemLine(const giPoint3& start, const giPoint3& end) : end_point(end) {
    point = start;
}
nmkSortItemLine::nmkSortItemLine(const nmkSortItemLine&) = default;
nmkSortItemLine& nmkSortItemLine::operator=(const nmkSortItemLine&) = default;
nmkSortItemLine::~nmkSortItemLine() = default;

// Deliberate: the points are not swapped with the flag, so that the caller gets back exactly what
// it gave; reversed() gives the direction of travel.
const giPoint3& nmkSortItemLine::get_point() const { return point; }
const giPoint3& nmkSortItemLine::get_end_point() const { return end_point; }

void nmkSortItemLine::reverse() { reversed_flag = reversed_flag == 0 ? 1 : 0; }

CRuntimeClass* nmkSortItemLine::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkSortItemLine::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkSortItemLine", sizeof(nmkSortItemLine),
                                          nmkSortItemWithEndPoint::GetThisClass()};
    return &runtime_class;
}

CRuntimeClass* nmkSortItemLine::_GetBaseClass() { return nmkSortItemWithEndPoint::GetThisClass(); }

const utTypeID& nmkSortItemLine::ut_static_type() {
    static const utTypeID type("nmkSortItemLine", &nmkSortItemWithEndPoint::ut_static_type());
    return type;
}

const utTypeID& nmkSortItemLine::ut_dynamic_type() const { return ut_static_type(); }

int nmkSortItemLine::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

nmkSortItemLine* nmkSortItemLine::ut_dynamic_cast(nmkSortItem* item) {
    return nmk_ordering::cast_to_kind<nmkSortItemLine>(item);
}

const nmkSortItemLine* nmkSortItemLine::ut_dynamic_cast(const nmkSortItem* item) {
    return nmk_ordering::cast_to_kind<const nmkSortItemLine>(item);
}
