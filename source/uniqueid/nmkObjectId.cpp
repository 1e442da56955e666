#include <mfc/CArchive.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>

#include <utility>

#include "session_join.h"

namespace {

const CRuntimeClassRegistration registration(nmkObjectId::GetThisClass());

}  // namespace

bool nmkObjectId::s_protect_flag = false;

nmkObjectId::nmkObjectId() : m_id(nmk_ptr_claim, nmkUniqueId::create()) {}

nmkObjectId::~nmkObjectId() { invalidate(); }

CRuntimeClass* nmkObjectId::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkObjectId::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkObjectId", sizeof(nmkObjectId),
                                          CObject::GetThisClass(), CRuntimeClass::versionable | 1,
                                          CreateObject};
    return &runtime_class;
}

CRuntimeClass* nmkObjectId::_GetBaseClass() { return CObject::GetThisClass(); }

CObject* nmkObjectId::CreateObject() { return new nmkObjectId; }

nmkRefToObjectId nmkObjectId::create_reference() { return nmkRefToObjectId(m_id); }

int nmkObjectId::is_equal(const nmkObjectId& other) const noexcept {
    return m_id == other.m_id ? 1 : 0;
}

int nmkObjectId::is_target_of(const nmkRefToObjectId& reference) const noexcept {
    return get_uid() == reference.get_uid() ? 1 : 0;
}

void nmkObjectId::mutate() { m_id.rename_member(); }

void nmkObjectId::protect_id(bool flag) { s_protect_flag = flag; }

bool nmkObjectId::protect_id() {
    return s_protect_flag && nmkActionBlocker<nmkProtectIdTag>::block();
}

void nmkObjectId::swap_ids(nmkObjectId& other) {
    std::swap(m_id.get_modifiable_ptr(), other.m_id.get_modifiable_ptr());
}

void nmkObjectId::uncouple() {
    int count = 0;
    {
        // Deliberate: the copy counts itself, so that an object that nobody refers to takes a new
        // identity as well.
        const nmkUniqueIdPtr copy = get_id();
        count = copy.reference_count();
    }
    if (count <= 1) return;
    nmkUniqueIdPtr fresh;
    fresh.rename_member();
    m_id = fresh;
}

void nmkObjectId::Serialize(CArchive& archive) {
    m_id.Serialize(archive);
    if (archive.IsStoring()) return;
    // Deliberate: renamed before it is looked up. An owner is never without an identity.
    if (m_id.is_valid() == 0) m_id.rename_member();
    nmk_uniqueid::join_session(m_id, !protect_id());
}

void nmkObjectId::invalidate() { m_id.set_invalid(); }

CArchive& operator>>(CArchive& archive, nmkObjectId*& object) {
    object = static_cast<nmkObjectId*>(archive.ReadObject(nmkObjectId::GetThisClass()));
    return archive;
}
