#include <mfc/CArchive.h>
#include <nmktoolbox/curves/nmkWorkPlane.h>

namespace {

const CRuntimeClassRegistration registration(nmkWorkPlane::GetThisClass());

constexpr unsigned int schema = 1;
constexpr unsigned int no_schema = static_cast<unsigned int>(-1);  // loaded without its class

// Limits of operator==.
constexpr double same_origin = 0.01;           // distance of the origins; at most: the same
const giAngle same_direction(giRadians, 0.1);  // angle of two axes; at most: the same

}  // namespace

nmkWorkPlane::nmkWorkPlane() { init(); }

nmkWorkPlane::~nmkWorkPlane() = default;

CRuntimeClass* nmkWorkPlane::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkWorkPlane::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkWorkPlane", sizeof(nmkWorkPlane),
                                          CObject::GetThisClass(),
                                          CRuntimeClass::versionable | schema, CreateObject};
    return &runtime_class;
}

CRuntimeClass* nmkWorkPlane::_GetBaseClass() { return CObject::GetThisClass(); }

CObject* nmkWorkPlane::CreateObject() { return new nmkWorkPlane; }

bool nmkWorkPlane::operator==(const nmkWorkPlane& other) const {
    const giWorkplane3& a = m_plane;
    const giWorkplane3& b = other.m_plane;
    return a.origin().coincident(b.origin(), same_origin) != 0 &&
           a.x_axis().parallel(b.x_axis(), same_direction) != 0 &&
           a.y_axis().parallel(b.y_axis(), same_direction) != 0 &&
           a.z_axis().parallel(b.z_axis(), same_direction) != 0;
}

void nmkWorkPlane::init() {
    m_plane.become(giPoint3(giOrigin::origin), giUnitVec3(giAxis::y), giUnitVec3(giAxis::z));
}

void nmkWorkPlane::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << m_plane;
        return;
    }
    const unsigned int stored = archive.GetObjectSchema();
    if (stored != no_schema && stored > schema) {
        throw CArchiveException(CArchiveException::badSchema);
    }
    archive >> m_plane;
}

CArchive& operator<<(CArchive& archive, const nmkWorkPlane& plane) {
    giWorkplane3 stored;
    plane.get_workplane(stored);
    return archive << stored;
}

CArchive& operator>>(CArchive& archive, nmkWorkPlane& plane) {
    giWorkplane3 loaded;
    archive >> loaded;
    plane.set_workplane(loaded);
    return archive;
}

CArchive& operator>>(CArchive& archive, nmkWorkPlane*& plane) {
    plane = static_cast<nmkWorkPlane*>(archive.ReadObject(nmkWorkPlane::GetThisClass()));
    return archive;
}
