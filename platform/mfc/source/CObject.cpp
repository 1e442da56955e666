#include <mfc/CObject.h>

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base_class) const noexcept {
    if (base_class == nullptr) return false;
    for (const CRuntimeClass* each = this; each != nullptr; each = each->m_pBaseClass) {
        if (each == base_class) return true;
    }
    return false;
}

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
