// CRuntimeClassPtrObj: a run-time class as an element of containers, with its set and its table.
//
// Classes are compared by the address of their CRuntimeClass, which is borrowed and exists until
// the process ends. The nil element holds null.
#pragma once

#include <mfc/CObject.h>
#include <ncamcontainer/coTable.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// A pointer to a run-time class.
class NMKTOOLBOX_EXPORT CRuntimeClassPtrObj {
  public:
    CRuntimeClassPtrObj() noexcept = default;
    CRuntimeClassPtrObj(const CRuntimeClass* runtime_class) noexcept : m_class(runtime_class) {}

    /// The run-time class, or null.
    const CRuntimeClass* get() const noexcept { return m_class; }
    operator const CRuntimeClass*() const noexcept { return m_class; }
    const CRuntimeClass* operator->() const noexcept { return m_class; }

    bool operator==(const CRuntimeClassPtrObj& other) const noexcept {
        return m_class == other.m_class;
    }

  private:
    const CRuntimeClass* m_class = nullptr;
};

/// The hash of a run-time class for sets and tables.
NMKTOOLBOX_EXPORT unsigned int co_hash(const CRuntimeClassPtrObj& runtime_class);

using CRuntimeClassPtrObjcoSet = coSet<CRuntimeClassPtrObj>;
using CRuntimeClassPtrObjutStringcoTable = coTable<CRuntimeClassPtrObj, utString>;

// Compiled once, in this library, which exports them.
extern template class NMKTOOLBOX_EXPORT coSet<CRuntimeClassPtrObj>;
extern template class NMKTOOLBOX_EXPORT coTable<CRuntimeClassPtrObj, utString>;
