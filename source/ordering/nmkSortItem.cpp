// nmkSortItem: the index and the run-time type of an item.
#include <nmktoolbox/ordering/nmkSortItem.h>

#include "ordering/run_time_type.h"

nmkSortItem::nmkSortItem() : m_index(no_index) {}
nmkSortItem::nmkSortItem(const nmkSortItem& other) : CObject(), m_index(other.m_index) {}
nmkSortItem::~nmkSortItem() = default;

nmkSortItem& nmkSortItem::operator=(const nmkSortItem& other) {
    m_index = other.m_index;
    return *this;
}

CRuntimeClass* nmkSortItem::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkSortItem::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkSortItem", sizeof(nmkSortItem),
                                          CObject::GetThisClass()};
    return &runtime_class;
}

CRuntimeClass* nmkSortItem::_GetBaseClass() { return CObject::GetThisClass(); }

const utTypeID& nmkSortItem::ut_static_type() {
    static const utTypeID type("nmkSortItem");
    return type;
}

const utTypeID& nmkSortItem::ut_dynamic_type() const { return ut_static_type(); }

int nmkSortItem::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

nmkSortItem* nmkSortItem::ut_dynamic_cast(nmkSortItem* item) { return item; }

const nmkSortItem* nmkSortItem::ut_dynamic_cast(const nmkSortItem* item) { return item; }
