#include <nmktoolbox/curves/nmkWorkplaneUtils.h>

#include <cmath>

namespace {

// Angle of a mapped axis and the cross product of the two others, for maps that change the hand.
// Above: the axes are not a frame.
const giAngle largest_skew(giRadians, 0.001);

// Made on first use, since an invalid reference spends a serial of identifiers.
nmkRefToObjectId& mirror_wp_id() {
    static nmkRefToObjectId id;
    return id;
}

// The axes of a workplane as a map leaves them, each as a direction.
struct MappedAxes {
    giUnitVec3 x;
    giUnitVec3 y;
    giUnitVec3 z;

    MappedAxes(const giXform3& xform, const giWorkplane3& plane)
        : x(xform.transform(plane.x_axis().vector())),
          y(xform.transform(plane.y_axis().vector())),
          z(xform.transform(plane.z_axis().vector())) {}

    bool is_left_handed_frame() const {
        const auto is_against = [](const giUnitVec3& a, const giUnitVec3& b, const giUnitVec3& c) {
            return giUnitVec3(a.vector().cross(b.vector())).parallel(-c, largest_skew) != 0;
        };
        return is_against(y, z, x) && is_against(z, x, y) && is_against(x, y, z);
    }
};

}  // namespace

const nmkRefToObjectId& nmkWorkplaneUtils::get_mirror_wp_id() { return mirror_wp_id(); }

void nmkWorkplaneUtils::set_mirror_wp_id(const nmkRefToObjectId& id) { mirror_wp_id() = id; }

giWorkplane3 nmkWorkplaneUtils::get_workplane_expressed_in_other(const giWorkplane3& plane,
                                                                 const giWorkplane3& other) {
    giWorkplane3 expressed;
    other.xform_to_work().transform(plane, expressed);
    return expressed;
}

double nmkWorkplaneUtils::get_z_shift(const giWorkplane3& a, const giWorkplane3& b) {
    return giVector3(b.origin(), a.origin()).dot(a.z_axis().vector());
}

bool nmkWorkplaneUtils::suitable_for_turning(const giWorkplane3& plane, double tolerance) {
    // Deliberate: the origin strictly below, the cross product at most.
    const giVector3 cross = plane.z_axis().vector().cross(giUnitVec3(giAxis::z).vector());
    return std::abs(plane.origin().x) < tolerance && std::abs(plane.origin().y) < tolerance &&
           cross.length() <= tolerance;
}

bool nmkWorkplaneUtils::transform(const giXform3& xform, const giWorkplane3& in,
                                  giWorkplane3& out) {
    if (!xform.changes_hand()) {
        xform.transform(in, out);
        return true;
    }
    const MappedAxes mapped(xform, in);
    if (!mapped.is_left_handed_frame()) return false;
    out.become(xform.transform(in.origin()), mapped.y, mapped.z);
    return true;
}

giWorkplane3 nmkWorkplaneUtils::workplane_with_axis(const giVector3& axis, const giPoint3& origin) {
    const giPoint3 set_origin = origin.is_set() ? origin : giPoint3(0.0, 0.0, 0.0);
    giVector3 reference = axis.cross(giVector3(0.0, 0.0, 1.0));
    if (reference.is_zero()) reference = axis.cross(giVector3(0.0, 1.0, 0.0));
    return giWorkplane3(set_origin, giUnitVec3(reference), giUnitVec3(axis));
}
