#include <mfc/CRuntimeClass.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

struct Register {
    std::mutex mutex;
    std::vector<const CRuntimeClass*> classes;
};

// Never deleted: statics of other libraries take their classes out until the very end.
Register& all_classes() {
    static auto* const made = new Register;
    return *made;
}

}  // namespace

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base_class) const noexcept {
    if (base_class == nullptr) return false;
    for (const CRuntimeClass* each = this; each != nullptr; each = each->m_pBaseClass) {
        if (each == base_class) return true;
    }
    return false;
}

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

const CRuntimeClass* CRuntimeClass::FromName(std::string_view name) {
    Register& all = all_classes();
    const std::lock_guard lock(all.mutex);
    const auto found = std::find_if(
        all.classes.begin(), all.classes.end(),
        [&](const CRuntimeClass* candidate) { return name == candidate->m_lpszClassName; });
    return found != all.classes.end() ? *found : nullptr;
}

CRuntimeClassRegistration::CRuntimeClassRegistration(const CRuntimeClass* registered)
    : m_registered(registered) {
    Register& all = all_classes();
    const std::lock_guard lock(all.mutex);
    all.classes.push_back(registered);
}

CRuntimeClassRegistration::~CRuntimeClassRegistration() {
    Register& all = all_classes();
    const std::lock_guard lock(all.mutex);
    const auto place = std::find(all.classes.begin(), all.classes.end(), m_registered);
    if (place != all.classes.end()) all.classes.erase(place);
}
