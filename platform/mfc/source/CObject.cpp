#include <mfc/CObject.h>

CRuntimeClass* CObject::GetRuntimeClass() const { return GetThisClass(); }

CObject::~CObject() = default;

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext&) const {}

CRuntimeClass* CObject::GetThisClass() {
    static CRuntimeClass of_this = {"CObject", sizeof(CObject), nullptr};
    return &of_this;
}

CRuntimeClass* CObject::_GetBaseClass() { return nullptr; }

bool CObject::IsKindOf(const CRuntimeClass* runtime_class) const {
    return GetRuntimeClass()->IsDerivedFrom(runtime_class);
}
