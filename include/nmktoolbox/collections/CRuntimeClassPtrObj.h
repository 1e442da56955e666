// CRuntimeClassPtrObj: a run-time class as an element of containers, with its set and its table.
//
// Classes are told apart by the address of their CRuntimeClass, which is borrowed and lives as long
// as the process. Nil holds null.
#pragma once

#include <mfc/CObject.h>
#include <ncamcontainer/coTable.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

class NMKTOOLBOX_EXPORT CRuntimeClassPtrObj {
  public:
    CRuntimeClassPtrObj() noexcept = default;
    CRuntimeClassPtrObj(const CRuntimeClass* runtime_class) noexcept : class_(runtime_class) {}

    const CRuntimeClass* get() const noexcept { return class_; }
    operator const CRuntimeClass*() const noexcept { return class_; }
    const CRuntimeClass* operator->() const noexcept { return class_; }

    bool operator==(const CRuntimeClassPtrObj& other) const noexcept {
        return class_ == other.class_;
    }

  private:
    const CRuntimeClass* class_ = nullptr;
};

/// The hash of a run-time class for sets and tables.
NMKTOOLBOX_EXPORT unsigned int co_hash(const CRuntimeClassPtrObj& runtime_class);

using CRuntimeClassPtrObjcoSet = coSet<CRuntimeClassPtrObj>;
using CRuntimeClassPtrObjutStringcoTable = coTable<CRuntimeClassPtrObj, utString>;

extern template class coSet<CRuntimeClassPtrObj>;
extern template class coTable<CRuntimeClassPtrObj, utString>;
