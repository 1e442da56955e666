// nmkWorkPlane: a workplane that can be stored.
#pragma once

#include <geometry/giWorkplane3.h>
#include <mfc/CObject.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkWorkPlane : public CObject {
  public:
    /// The world plane.
    nmkWorkPlane();
    nmkWorkPlane(const nmkWorkPlane& other) = default;
    nmkWorkPlane& operator=(const nmkWorkPlane& other) = default;
    ~nmkWorkPlane() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static CObject* CreateObject();

    /// True where the origins are at most 0.01 apart and each axis is parallel, in the same sense,
    /// to the other's within 0.1 radians. These limits are fixed and no tolerance of the kernel.
    bool operator==(const nmkWorkPlane& other) const;

    /// Becomes the world plane.
    void init();

    void get_workplane(giWorkplane3& plane) const { plane = m_plane; }
    void set_workplane(const giWorkplane3& plane) { m_plane = plane; }

    /// Writes or reads the workplane, by the direction of the archive. Reading throws the archive's
    /// exceptions, badSchema for a later schema, and leaves the workplane then as it was.
    void Serialize(CArchive& archive) override;

  private:
    giWorkplane3 m_plane;
};

/// Stores or loads the workplane alone, without its class.
NMKTOOLBOX_EXPORT CArchive& operator<<(CArchive& archive, const nmkWorkPlane& plane);
NMKTOOLBOX_EXPORT CArchive& operator>>(CArchive& archive, nmkWorkPlane& plane);

/// Loads a workplane with its class; the caller owns it.
NMKTOOLBOX_EXPORT CArchive& operator>>(CArchive& archive, nmkWorkPlane*& plane);
