// CObject.h: the root of the framework's classes.
//
// A class X under the root has one static CRuntimeClass; X::GetThisClass() returns it,
// GetRuntimeClass() returns that of an object's own class, and X::_GetBaseClass() that of the class
// X derives from.
#pragma once

#include <mfc/CRuntimeClass.h>

#pragma GCC visibility push(default)

class CArchive;
class CDumpContext;

/// The root. Copied only as part of a derived object.
class CObject {
  public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();

    /// Writes to or reads from the archive, by its direction; the root has nothing to stream.
    virtual void Serialize(CArchive& archive);

    /// Checks the object's invariants; the root has none.
    virtual void AssertValid() const;

    /// Writes the object for a developer to read; the root writes nothing.
    virtual void Dump(CDumpContext& context) const;

    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    /// True when the object's class is `runtime_class` or derives from it; false for null.
    bool IsKindOf(const CRuntimeClass* runtime_class) const;

  protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#pragma GCC visibility pop
