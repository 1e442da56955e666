#include <mfc/CArchive.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdPtr.h>

#include <memory>

namespace {

const CRuntimeClassRegistration registration(nmkUniqueIdPtr::GetThisClass());

constexpr int count_of_external = 2;

}  // namespace

// An identifier that shares one block of memory with the counts of its handles.
struct nmkUniqueIdPtr::Loaded {
    Loaded() {}  // NOLINT: the words are set before anybody sees them

    nmkUniqueId identifier;
};

nmkUniqueIdPtr::nmkUniqueIdPtr() : m_target(nmkUniqueId::create(nmk_ptr_invalid)) {}

nmkUniqueIdPtr::nmkUniqueIdPtr(nmkPtrClaim, nmkUniqueId* identifier)
    : m_target(identifier != nullptr ? identifier : nmkUniqueId::create(nmk_ptr_invalid)) {}

nmkUniqueIdPtr::~nmkUniqueIdPtr() = default;

nmkUniqueIdPtr nmkUniqueIdPtr::nil_handle() {
    const auto nil = std::make_shared<Loaded>();
    nil->identifier.m_hash = 0;
    nil->identifier.m_stamp = nmkUniqueId::invalid_stamp;
    nil->identifier.m_serial = 0;
    nil->identifier.m_spare = 0;
    nmkUniqueIdPtr handle{Empty()};
    handle.m_target = nmkUniqueIdcoPrf(std::shared_ptr<nmkUniqueId>(nil, &nil->identifier));
    return handle;
}

CRuntimeClass* nmkUniqueIdPtr::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkUniqueIdPtr::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkUniqueIdPtr", sizeof(nmkUniqueIdPtr),
                                          CObject::GetThisClass(), CRuntimeClass::versionable | 1,
                                          CreateObject};
    return &runtime_class;
}

CRuntimeClass* nmkUniqueIdPtr::_GetBaseClass() { return CObject::GetThisClass(); }

CObject* nmkUniqueIdPtr::CreateObject() { return new nmkUniqueIdPtr; }

bool nmkUniqueIdPtr::operator==(const nmkUniqueIdPtr& other) const noexcept {
    if (is_valid() == 0 || other.is_valid() == 0) return is_valid() == other.is_valid();
    return m_target->is_equal(other.m_target.get()) != 0;
}

unsigned long nmkUniqueIdPtr::get_hash_val() const noexcept {
    return m_target ? m_target->get_hash_val() : 0;
}

int nmkUniqueIdPtr::is_valid() const noexcept { return m_target ? m_target->is_valid() : 0; }

void nmkUniqueIdPtr::set_invalid() {
    if (m_target) m_target->set_invalid();
}

void nmkUniqueIdPtr::rename_member() {
    if (m_target) m_target->update();
}

int nmkUniqueIdPtr::reference_count() const noexcept {
    return m_target.external() ? count_of_external : m_target.use_count();
}

void nmkUniqueIdPtr::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        m_target->write(archive);
        return;
    }
    // Generated before it is read, as any new identifier.
    const auto loaded = std::make_shared<Loaded>();
    loaded->identifier.generate();
    loaded->identifier.read(archive);
    m_target = nmkUniqueIdcoPrf(std::shared_ptr<nmkUniqueId>(loaded, &loaded->identifier));
}

unsigned int co_hash(const nmkUniqueIdPtr& handle) {
    return static_cast<unsigned int>(handle.get_hash_val());
}

CArchive& operator>>(CArchive& archive, nmkUniqueIdPtr*& handle) {
    handle = static_cast<nmkUniqueIdPtr*>(archive.ReadObject(nmkUniqueIdPtr::GetThisClass()));
    return archive;
}

template class coSet<nmkUniqueIdPtr>;
