#include <mfc/CArchive.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>

#include "session_join.h"

namespace {

const CRuntimeClassRegistration registration(nmkRefToObjectId::GetThisClass());

}  // namespace

nmkRefToObjectId::nmkRefToObjectId() = default;

nmkRefToObjectId::~nmkRefToObjectId() = default;

CRuntimeClass* nmkRefToObjectId::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkRefToObjectId::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkRefToObjectId", sizeof(nmkRefToObjectId),
                                          CObject::GetThisClass(), CRuntimeClass::versionable | 1,
                                          CreateObject};
    return &runtime_class;
}

CRuntimeClass* nmkRefToObjectId::_GetBaseClass() { return CObject::GetThisClass(); }

CObject* nmkRefToObjectId::CreateObject() { return new nmkRefToObjectId; }

void nmkRefToObjectId::become(const nmkRefToObjectId& other) { set_id(other.m_id); }

void nmkRefToObjectId::become(const nmkUniqueIdPtr& handle) { set_id(handle); }

int nmkRefToObjectId::is_equal(const nmkRefToObjectId& other) const noexcept {
    return m_id == other.m_id ? 1 : 0;
}

bool nmkRefToObjectId::operator<(const nmkRefToObjectId& other) const noexcept {
    return (*m_id < *other.m_id) != 0;
}

void nmkRefToObjectId::set_invalid() {
    // Deliberate: a handle of its own. Making the shared identifier invalid would harm the target.
    m_id = nmkUniqueIdPtr();
}

void nmkRefToObjectId::Serialize(CArchive& archive) {
    m_id.Serialize(archive);
    if (archive.IsStoring()) return;
    // Deliberate: unlike an owner, a reference that reads as invalid stays so and never enters the
    // table: it refers to nothing.
    nmk_uniqueid::join_session(m_id, m_id.is_valid() != 0 && !nmkObjectId::protect_id());
}

void nmkRefToObjectId::set_id(const nmkUniqueIdPtr& handle) { m_id = handle; }

unsigned int co_hash(const nmkRefToObjectId& reference) {
    return static_cast<unsigned int>(reference.get_hash_val());
}

CArchive& operator>>(CArchive& archive, nmkRefToObjectId*& reference) {
    reference =
        static_cast<nmkRefToObjectId*>(archive.ReadObject(nmkRefToObjectId::GetThisClass()));
    return archive;
}

template class coSet<nmkRefToObjectId>;
